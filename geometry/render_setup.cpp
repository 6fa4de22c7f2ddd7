#include "geometry/render_setup.h"

#include <cstdint>

#include "entry/session_record.h"
#include "geometry/bevel_profiles.h"
#include "geometry/field/cone_kernel.h"
#include "geometry/field/fast_field.h"
#include "geometry/field/height_field.h"
#include "geometry/render_buffers.h"
#include "geometry/row_machine.h"
#include "pictures/sources/picture_tables.h"
#include "shading/iridescence_table.h"
#include "shading/light_stencils.h"
#include "shading/spectral_tables.h"
#include "vector/fast_passes.h"

// Side and caustic stencils look at the surface from beside their light, in degrees.
constexpr int32_t kSideTurn = 315;
constexpr int32_t kCausticTurn = 90;

static void setLightStencils(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  const int32_t light1 = settings->light1Angle % 360;
  const int32_t light2 = settings->light2Angle % 360;
  setLightStencil(light1, kLight1Main, session);
  setLightStencil(light1 + kSideTurn, kLight1Side, session);
  setLightStencil(light1 + kCausticTurn, kLight1Caustic, session);
  setLightStencil(light2, kLight2Main, session);
  setLightStencil(light2 + kSideTurn, kLight2Side, session);
  setLightStencil(light2 + kCausticTurn, kLight2Caustic, session);
}

static int32_t plannedSteps(const RenderState* render, const EffectSettings* settings) {
  int32_t steps = render->renderHeight;
  if (settings->bevelActive != 0) steps += 5 * render->renderHeight + 2;
  if (settings->textureReliefActive != 0) steps += render->renderHeight;
  return steps;
}

void setUpSurface(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  render->fast = fastPasses();
  buildSessionTables(session);
  copyPicturesToTables(session);
  const bool build = render->buildHeightField == 1;
  settings->bevelActive = build ? 1 : 0;
  settings->textureReliefActive = build && settings->textureChoice != kTextureChoiceNone ? 1 : 0;
  setLightStencils(session);
  render->progressDone = 0;
  render->progressTotal = plannedSteps(render, settings);
  if (build) {
    radiusConstants(session);
    buildProfile(session);
  }
  buildIridescenceTable(session);
}

void beginField(SessionRecord* session) {
  RenderState* render = &session->render;
  const bool build = render->buildHeightField == 1;
  if (build) {
    render->preview.kept.valid = 0;
    buildConeKernel(session);
    prepareFastField(session);
    if (render->fastField.inUse == 0) clearField(render);
  }
  render->phase = kPhaseStamp;
  render->row = -1;
  render->running = 1;
  render->internalPass = 0;
  if (!build) enterShading(session);
}

void renderSetUp(SessionRecord* session) {
  session->render.running = 0;
  if (!geometryFitsBuffers(session)) {
    *session->result = kRenderBuffersMissing;
    return;
  }
  setUpSurface(session);
  beginField(session);
}
