#include "shading/lanes/row_in_lanes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "entry/session_record.h"
#include "geometry/field/selection_mask.h"
#include "shading/lanes/lane_constants.h"
#include "shading/shade_row.h"
#include "vector/fast_passes.h"

constexpr int32_t kMostStages = 16;
constexpr int32_t kCacheLine = 64;

struct StageList {
  ShadingStage stages[kMostStages];
  int32_t count;
};

static void append(StageList* list, ShadingStage stage) {
  if (stage != nullptr) list->stages[list->count++] = stage;
}

static void appendColour(StageList* list, const ColourPasses& passes, const RowConstants& row,
                         const FastShadingTables& tables, const EffectSettings& settings) {
  if (settings.blendMode == kBlendModeTarnish) return append(list, passes.tarnishAlone);
  if (settings.blendMode == kBlendModeCaustic) return append(list, passes.causticAlone);
  const bool glassy = row.glass > 0;
  append(list, row.light2On ? passes.twoLights : passes.oneLight);
  if (row.reflectOn) append(list, passes.reflection);
  if (tables.filmOn != 0) append(list, passes.film);
  if (glassy) append(list, passes.glass);
  if (glassy && row.reflectOn) append(list, passes.behind);
  if (settings.tarnish != 0) append(list, passes.tarnish);
}

// What this row needs, in order.
static StageList stagesOf(const FastPasses& fast, const RowConstants& row, const HostRows& host,
                          const FastShadingTables& tables, const EffectSettings& settings) {
  const CompositionPasses& composition = *fast.composition;
  const int32_t mode = settings.blendMode;
  const bool glassy = row.glass > 0 || mode == kBlendModeCaustic;
  StageList list = {};
  append(&list, host.grey ? composition.loadGrey : composition.loadRgb);
  if (glassy || row.reflectOn || tables.filmOn != 0) append(&list, fast.light->steepness);
  append(&list, glassy ? fast.light->glassyLights : fast.light->opaqueLights);
  appendColour(&list, *fast.colour, row, tables, settings);
  append(&list, host.grey ? composition.spreadToGrey : composition.spread);
  if (mode >= 1 && mode <= kBlendStages) append(&list, composition.blend[mode - 1]);
  if (isPreview(&settings)) append(&list, composition.checkerboard);
  append(&list, host.grey ? composition.storeGrey : composition.storeRgb);
  return list;
}

// Whether a pixel may be written before the next one is read.
static bool mayWriteLate(const HostRows& host) {
  const int64_t samples = host.grey ? 1 : 3;
  const auto in = reinterpret_cast<uintptr_t>(host.in);
  const auto out = reinterpret_cast<uintptr_t>(host.out);
  if (in == out) return host.inStep == host.outStep;
  const int64_t inBytes = int64_t{host.width - 1} * host.inStep + samples;
  const int64_t outBytes = int64_t{host.width - 1} * host.outStep + samples;
  return in < out ? out - in >= static_cast<uint64_t>(inBytes)
                  : in - out >= static_cast<uint64_t>(outBytes);
}

static void loadPixels(const HostRows& host, int32_t start, int32_t count, ShadingChunk* chunk) {
  const int32_t samples = host.grey ? 1 : 3;
  const uint8_t* in = host.in + int64_t{start} * host.inStep;
  uint8_t* pixels = chunk->pixels;
  if (host.inStep == samples) {
    std::memcpy(pixels, in, static_cast<size_t>(count) * samples);
  } else {
    for (int32_t i = 0; i < count; ++i) {
      for (int32_t k = 0; k < samples; ++k) pixels[samples * i + k] = in[k];
      in += host.inStep;
    }
  }
  std::fill(pixels + samples * count, pixels + samples * chunk->lanes, uint8_t{0});
}

static void storePixels(const HostRows& host, int32_t start, int32_t count,
                        const ShadingChunk& chunk) {
  const int32_t samples = host.grey ? 1 : 3;
  uint8_t* out = host.out + int64_t{start} * host.outStep;
  if (host.outStep == samples) {
    std::memcpy(out, chunk.pixels, static_cast<size_t>(count) * samples);
    return;
  }
  for (int32_t i = 0; i < count; ++i) {
    for (int32_t k = 0; k < samples; ++k) out[k] = chunk.pixels[samples * i + k];
    out += host.outStep;
  }
}

static void loadCells(const int16_t* row, int32_t count, int32_t lanes, Lane* cells) {
  std::copy_n(row, count + 1, cells);
  std::fill(cells + count + 1, cells + lanes + 1, cells[count]);
}

static void loadMask(const MaskRow& mask, int32_t start, int32_t count, ShadingChunk* chunk) {
  if (mask.samples == nullptr) {
    std::fill_n(chunk->mask, chunk->lanes, static_cast<uint8_t>(mask.fill));
  } else {
    std::copy_n(mask.samples + start, count, chunk->mask);
    std::fill(chunk->mask + count, chunk->mask + chunk->lanes, uint8_t{0});
  }
}

static void loadWords(const int32_t* words, int32_t count, int32_t lanes, Lane* to) {
  for (int32_t i = 0; i < count; ++i) to[i] = static_cast<Lane>(words[i]);
  std::fill(to + count, to + lanes, Lane{0});
}

static void shadeChunks(SessionRecord* session, const ShadingRow& row, const StageList& list,
                        const HostRows& host, bool reflectOn, ShadingChunk* chunk) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  const int32_t r = render->currentRow;
  const MaskRow mask = maskRow(session, r);
  const PreviewPlace& place = render->preview.place;
  int32_t* previousRow = lineBufferWords(render) + place.columnsBefore;
  const int16_t* upper = fieldRow(render, r) + place.columnsBefore;
  const int16_t* lower = fieldRow(render, r + 1) + place.columnsBefore;
  const int32_t chunks = (host.width + kChunkColumns - 1) / kChunkColumns;
  const int32_t columns = ((host.width + chunks - 1) / chunks + kLaneMultiple - 1) & -kLaneMultiple;
  auto beforeU = static_cast<Lane>(reflectionBefore(session, r));
  for (int32_t start = 0; start < host.width; start += columns) {
    const int32_t count = std::min(columns, host.width - start);
    chunk->lanes = (count + kLaneMultiple - 1) & -kLaneMultiple;
    chunk->firstColumn = place.left + place.columnsBefore + start;
    loadCells(upper + start, count, chunk->lanes, chunk->upper);
    loadCells(lower + start, count, chunk->lanes, chunk->lower);
    loadPixels(host, start, count, chunk);
    if (isPreview(settings)) loadMask(mask, place.columnsBefore + start, count, chunk);
    if (settings->tarnish != 0) {
      loadWords(previousRow + render->tarnishRowStart + start, count, chunk->lanes, chunk->tarnish);
    } else {
      std::fill_n(chunk->tarnish, chunk->lanes, Lane{0});
    }
    if (reflectOn) loadWords(previousRow + start, count, chunk->lanes, chunk->beforeV);
    chunk->u[0] = beforeU;
    for (int32_t i = 0; i < list.count; ++i) list.stages[i](row, chunk);
    if (reflectOn) std::copy_n(chunk->v, count, previousRow + start);
    beforeU = chunk->u[count];
    storePixels(host, start, count, *chunk);
  }
}

bool shadeRowInLanes(SessionRecord* session, const RowConstants& constants, const HostRows& host) {
  RenderState* render = &session->render;
  const FastShadingTables& tables = session->shading.fast;
  const EffectSettings* settings = settingsOf(session);
  if (render->fast == nullptr || tables.ready == 0 || host.width < 1) return false;
  if (tables.height != settings->height || !mayWriteLate(host)) return false;
  ShadingRow row;
  if (!laneConstants(session, constants, &row)) return false;
  row.channels = host.grey ? 1 : 3;
  const int16_t* upper = fieldRow(render, render->currentRow) + render->preview.place.columnsBefore;
  if (!render->fast->light->isGentle(upper, upper + render->fieldStride, host.width)) return false;
  const StageList list = stagesOf(*render->fast, constants, host, tables, *settings);
  const bool reflects = constants.reflectOn && settings->blendMode != kBlendModeTarnish &&
                        settings->blendMode != kBlendModeCaustic;
  // Aligned by hand: not every system's stack lets the compiler do it.
  alignas(16) uint8_t memory[sizeof(ShadingChunk) + kCacheLine];
  const auto over = reinterpret_cast<uintptr_t>(memory) % kCacheLine;
  auto* chunk = reinterpret_cast<ShadingChunk*>(memory + kCacheLine - over);
  shadeChunks(session, row, list, host, reflects, chunk);
  return true;
}
