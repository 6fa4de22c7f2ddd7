#include "shading/prepare_shading.h"

#include <algorithm>
#include <cstdint>

#include "entry/session_record.h"
#include "services/fixed_point.h"
#include "shading/lanes/lane_constants.h"
#include "shading/row_constants.h"
#include "shading/shade_row.h"

constexpr int32_t kRipMapStarts[kRipMapLevels] = {0, 64, 96, 112, 120, 124, 126};

// Largest coordinate change that each rip-map level serves.
constexpr int32_t kLevelLimits[kRipMapLevels] = {1, 2, 5, 11, 22, 45, 64};

static void buildRipMapTables(ShadingTables* tables) {
  std::copy_n(kRipMapStarts, kRipMapLevels, tables->ripMapOffset);
  int32_t level = 0;
  for (int32_t change = 0; change < kRipMapSteps; ++change) {
    if (change > kLevelLimits[level]) ++level;
    tables->ripMapLevel[change] = level;
  }
}

static void buildCausticTable(ShadingTables* tables, bool grey) {
  if (!grey) {
    std::copy_n(tables->causticSpectrum, kCausticEntries, tables->caustic);
    return;
  }
  for (int32_t i = 0; i < kCausticEntries; ++i) {
    const int32_t level = i * (kCausticEntries - 1 - i) / 18;
    tables->caustic[i] = {level, level, level};
  }
}

static void buildProceduralWeights(ShadingTables* tables) {
  for (int32_t v = 0; v < 256; ++v) {
    tables->proceduralWeight[v] = static_cast<int16_t>(v < 128 ? 2 * v : 511 - 2 * v);
  }
}

// What the row above the first one saw, where that is not the picture's first.
static void lookAbove(SessionRecord* session) {
  RenderState* render = &session->render;
  int32_t* seen = lineBufferWords(render);
  std::fill_n(seen, render->renderWidth, kReflectionStart);
  const int32_t first = render->preview.place.rowsBefore;
  if (first == 0) return;
  const int16_t* upper = fieldRow(render, first - 1);
  const int16_t* lower = fieldRow(render, first);
  for (int32_t c = 0; c < render->renderWidth; ++c) {
    seen[c] = environmentCoordinate(session->shading, lower[c] - upper[c]);
  }
}

void prepareShading(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  ShadingTables* tables = &session->shading;
  buildRipMapTables(tables);
  tables->reflectWeight = (Word32(settings->reflection) * 256 / 100).value;
  tables->reflectRest = (Word32(256) - tables->reflectWeight).value;
  buildCausticTable(tables, settings->iriTableChoice == 1);
  buildProceduralWeights(tables);
  prepareLanes(session);
  if (session->render.lineBuffer.address != nullptr) {
    lookAbove(session);
  }
}
