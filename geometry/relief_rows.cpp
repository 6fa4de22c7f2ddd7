#include "geometry/relief_rows.h"

#include <algorithm>
#include <array>

#include "entry/session_record.h"
#include "pictures/picture_surface.h"
#include "vector/fast_passes.h"

constexpr int32_t kRows = 4;
constexpr int32_t kParts = 128;

static constexpr std::array<CubicWeights, kParts> cubicWeights() {
  std::array<CubicWeights, kParts> weights = {};
  for (int32_t f = 0; f < kParts; ++f) {
    const int32_t g = f * f >> 7;
    const int32_t w[kRows] = {(128 - f) * (g - f),
                              -2 * (128 - f) * (g - 128) + f * (g - 3 * f + 256),
                              (128 - f) * (g + f) - 2 * f * (g - 2 * f), f * (g - f)};
    for (int32_t k = 0; k < kRows; ++k) weights[f].w[k] = static_cast<int16_t>(-w[k]);
  }
  return weights;
}

constexpr std::array<CubicWeights, kParts> kCubicWeights = cubicWeights();

// Behind the column table, in the words that it leaves free.
uint8_t* reliefFirstTexels(SessionRecord* session) {
  RenderState* render = &session->render;
  return reinterpret_cast<uint8_t*>(lineBufferWords(render) + render->columnTableStart +
                                    render->renderWidth + 1);
}

uint8_t* reliefParts(SessionRecord* session) {
  return reliefFirstTexels(session) + session->render.renderWidth + 1;
}

// The kernel buffers are free once the field is stamped: one holds the resampled rows, the other
// every column's weights of its four texels.
static int64_t reliefColumns(const RenderState* render) {
  const int64_t columns = int64_t{render->renderWidth} + 1;
  return (columns + kWeightedColumns - 1) / kWeightedColumns * kWeightedColumns;
}

static int16_t* resampledRow(const RenderState* render, int32_t slot) {
  return static_cast<int16_t*>(render->coneKernel.address) + slot * reliefColumns(render);
}

static int16_t* evenWeights(const RenderState* render) {
  return static_cast<int16_t*>(render->edgeKernel.address);
}

static int16_t* oddWeights(const RenderState* render) {
  return evenWeights(render) + 2 * reliefColumns(render);
}

void prepareReliefRows(SessionRecord* session, int64_t firstTexel) {
  RenderState* render = &session->render;
  const EffectSettings* settings = settingsOf(session);
  const bool roomy = 2 * kRows * reliefColumns(render) <= kKernelBytes;
  // Wrapped at 256, or never below 0, four neighbours lie side by side.
  const bool sideBySide =
      settings->textureWidth == kTextureSide ||
      (settings->textureWidth > 0 && settings->textureWidth < kTextureSide && firstTexel >= 0);
  // A host may write into the settings between two rows.
  render->reliefWidth = settings->textureWidth;
  render->reliefIsFast = render->fast != nullptr && roomy && sideBySide ? 1 : 0;
  std::fill_n(render->reliefRowTags, kRows, -1);
  if (render->reliefIsFast == 0) return;
  const uint8_t* parts = reliefParts(session);
  int16_t* even = evenWeights(render);
  int16_t* odd = oddWeights(render);
  std::fill_n(even, 4 * reliefColumns(render), int16_t{0});
  for (int32_t x = 0; x <= render->renderWidth; ++x) {
    const int16_t* w = kCubicWeights[parts[x]].w;
    even[2 * x] = w[0];
    even[2 * x + 1] = w[2];
    odd[2 * x] = w[1];
    odd[2 * x + 1] = w[3];
  }
}

static void resample(SessionRecord* session, int32_t texelRow, int32_t slot) {
  RenderState* render = &session->render;
  const int32_t width = render->reliefWidth;
  const auto* table = static_cast<const uint8_t*>(render->textureTable.address);
  uint8_t texels[kTextureSide + kRows];
  std::copy_n(table + kTextureSide * texelRow, width, texels);
  for (int32_t i = 0; i < kRows; ++i) texels[width + i] = texels[i];
  render->fast->surface->resampleRow(texels, reliefFirstTexels(session),
                                     {evenWeights(render), oddWeights(render)},
                                     render->renderWidth + 1, resampledRow(render, slot));
  render->reliefRowTags[slot] = texelRow;
}

// The slot that holds the row, filled when no slot does. Rows in `wanted` stay where they are.
static int32_t slotOf(SessionRecord* session, int32_t texelRow, const uint8_t wanted[kRows]) {
  const int32_t* tags = session->render.reliefRowTags;
  const auto held = static_cast<int32_t>(std::find(tags, tags + kRows, texelRow) - tags);
  if (held < kRows) return held;
  int32_t slot = 0;
  while (std::find(wanted, wanted + kRows, tags[slot]) != wanted + kRows) ++slot;
  resample(session, texelRow, slot);
  return slot;
}

void pressReliefRow(SessionRecord* session, const uint8_t texelRows[4], int32_t part,
                    int32_t depth) {
  RenderState* render = &session->render;
  const CubicWeights& weights = kCubicWeights[part];
  const int16_t* rows[kRows];
  rows[1] = resampledRow(render, slotOf(session, texelRows[1], texelRows));
  for (const int32_t i : {0, 2, 3}) {
    // Between whole texels alone: at one, the cubic is that texel.
    rows[i] = weights.w[i] == 0 ? rows[1]
                                : resampledRow(render, slotOf(session, texelRows[i], texelRows));
  }
  render->fast->surface->pressRow(rows, weights, depth, settingsOf(session)->previewScale,
                                  render->renderWidth + 1, fieldRow(render, render->currentRow));
}
