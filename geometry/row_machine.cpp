#include "geometry/row_machine.h"

#include <algorithm>
#include <cstdint>

#include "entry/session_record.h"
#include "geometry/bevel_profiles.h"
#include "geometry/field/fast_field.h"
#include "geometry/field/height_field.h"
#include "geometry/render_buffers.h"
#include "geometry/render_setup.h"
#include "geometry/texture_relief.h"
#include "shading/prepare_shading.h"
#include "shading/shade_row.h"

static void enterPhase(RenderState* render, int32_t phase, int32_t row, bool internal) {
  render->phase = phase;
  render->row = row;
  render->internalPass = internal ? 1 : 0;
}

void enterShading(SessionRecord* session) {
  RenderState* render = &session->render;
  enterPhase(render, kPhaseShade, render->preview.place.rowsBefore, /*internal=*/false);
  render->maskPass = 0;
  prepareShading(session);
}

void enterProfile(SessionRecord* session) {
  enterPhase(&session->render, kPhaseProfile, 0, /*internal=*/true);
  buildTextureColumns(session);
}

static void stampStep(SessionRecord* session);

// The host delivers the mask other than it did before: only stamps show what that comes to.
// Progress starts over as well, but for a first row, on which nothing has been done yet.
static void startOver(SessionRecord* session) {
  RenderState* render = &session->render;
  giveUpFastField(session);
  if (render->phase == kPhaseStamp && render->row == -1) return stampStep(session);
  render->progressDone = 0;
  enterPhase(render, kPhaseStamp, -1, /*internal=*/false);
}

static void stampStep(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->fastField.inUse == 0) {
    stampRow(session);
  } else if (!walkFieldRow(session)) {
    return startOver(session);
  }
  if (++render->row <= render->renderHeight) return;
  enterPhase(render, kPhaseBorder, 0, /*internal=*/false);
  render->maskPass = 1;
}

static void borderStep(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->fastField.inUse == 0) {
    fillBorderRow(session);
  } else if (!scanFieldRow(session)) {
    return startOver(session);
  }
  if (++render->row <= render->renderHeight + 1) return;
  enterPhase(render, kPhaseSmoothForward, 0, /*internal=*/true);
}

static void smoothForwardStep(SessionRecord* session) {
  RenderState* render = &session->render;
  smoothForwardRow(session);
  if (++render->row <= render->renderHeight) return;
  enterPhase(render, kPhaseSmoothBackward, render->renderHeight, /*internal=*/true);
  render->maskPass = 0;
}

static void smoothBackwardStep(SessionRecord* session) {
  RenderState* render = &session->render;
  smoothBackwardRow(session);
  if (--render->row >= 0) return;
  enterProfile(session);
}

static void profileStep(SessionRecord* session) {
  RenderState* render = &session->render;
  mapProfileRow(session);
  textureReliefRow(session);
  if (++render->row <= render->renderHeight) return;
  enterShading(session);
}

static void shadeStep(SessionRecord* session) {
  RenderState* render = &session->render;
  shadeRow(session);
  if (++render->row < render->renderHeight - render->preview.place.rowsBehind) return;
  render->running = 0;
  render->row = 0;
}

static void doRow(SessionRecord* session) {
  switch (session->render.phase) {
    case kPhaseStamp:
      return stampStep(session);
    case kPhaseBorder:
      return borderStep(session);
    case kPhaseSmoothForward:
      return smoothForwardStep(session);
    case kPhaseSmoothBackward:
      return smoothBackwardStep(session);
    case kPhaseProfile:
      return profileStep(session);
    default:
      return shadeStep(session);
  }
}

void step(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->running != 1) return;
  const FilterRecord* filter = session->filter;
  const bool final = !isPreview(settingsOf(session));
  if (final && filter->progressProc != nullptr) {
    // The passes have a few rows more than the picture, which the total leaves out.
    const int32_t done = std::min(render->progressDone, render->progressTotal);
    filter->progressProc(done, render->progressTotal);
    if (!recordStands(session)) return;
  }
  ++render->progressDone;
  render->currentRow = render->row;
  doRow(session);
  if (final && filter->abortProc != nullptr && filter->abortProc() != 0) {
    *session->result = kUserInformed;
  }
}
