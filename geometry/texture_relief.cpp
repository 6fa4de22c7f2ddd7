#include "geometry/texture_relief.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "entry/session_record.h"
#include "geometry/relief_rows.h"
#include "services/fixed_point.h"

constexpr int32_t kTexelUnits = 128;  // texel coordinates are in 1/128
constexpr int32_t kTexelShift = 7;
constexpr int32_t kReliefFactor = -48;  // negative: a positive texture raises light texels
constexpr int32_t kReliefDivisor = 16 * 4096;

// Settings within their range stay at 12 to 1600; a damaged one stops here, so that texel
// coordinates keep within 64 bits.
constexpr int32_t kLargestScaleFactor = 1 << 20;

// Catmull-Rom spline through p1 and p2 at f (0 to 127), times 64.
static int32_t cubic(int32_t p0, int32_t p1, int32_t p2, int32_t p3, int32_t f) {
  const int32_t g = f * f >> 7;
  return ((128 - f) * (p0 * (g - f) - 2 * p1 * (g - 128) + p2 * (g + f)) +
          f * (p3 * (g - f) + p1 * (g - 3 * f + 256) - 2 * p2 * (g - 2 * f))) /
         512;
}

// Four neighbouring texel indexes from a coordinate, by their low 8 bits. The column table holds
// one of these in each word.
struct TexelTaps {
  uint8_t index[4];
};

static TexelTaps texelTaps(int64_t coordinate, int32_t size) {
  const int32_t wrap = std::max(size, 1);
  const auto first = static_cast<int32_t>((coordinate >> kTexelShift) % wrap);
  TexelTaps taps;
  for (int32_t i = 0; i < 4; ++i) {
    taps.index[i] = static_cast<uint8_t>((int64_t{first} + i) % wrap);
  }
  return taps;
}

// Preview origin in texel units; the final render starts at the filter rectangle's corner. A
// preview that knows its place counts its pixels from there instead.
static int64_t previewShift(const SessionRecord* session, int32_t origin, int32_t scale) {
  if (!isPreview(settingsOf(session)) || session->render.preview.place.placed != 0) return 0;
  return int64_t{origin} * kTexelUnits * scale / 100;
}

static int64_t positionOf(const EffectSettings* settings, int64_t pixel, int32_t scale) {
  return pixel * kTexelUnits * settings->previewScale * scale / 100;
}

// Hundredths of a texel per pixel: from 16 texels down to an eighth.
static int32_t scaleFactor(int32_t textureScale) {
  // The whole part of the exponent is taken apart, so that the whole powers come out exact.
  const double exponent = std::clamp(4 - 7.0 * textureScale / 100, -1000.0, 1000.0);
  const double whole = std::floor(exponent);
  const double power = std::ldexp(std::pow(2.0, exponent - whole), static_cast<int>(whole));
  const int32_t factor = truncateToInt32(100 * power);
  return std::clamp(factor, 1, kLargestScaleFactor);
}

// What places the texture's rows and columns under those of the field, in texel units.
struct ReliefPlacement {
  int64_t firstRow;
  int64_t columnShift;
  int64_t columnStep;  // in hundredths
};

static ReliefPlacement reliefPlacement(const SessionRecord* session, int32_t scale) {
  const EffectSettings* settings = settingsOf(session);
  return {int64_t{settings->textureOffsetY} * kTexelUnits +
              previewShift(session, settings->previewOriginY, scale),
          previewShift(session, settings->previewOriginX, scale),
          int64_t{settings->previewScale} * kTexelUnits * scale};
}

// Fraction of a texel, 0 to 127, at which column x is sampled.
static int32_t columnPart(const ReliefPlacement& placement, int64_t x) {
  return static_cast<int32_t>((placement.columnShift + x * placement.columnStep / 100) &
                              (kTexelUnits - 1));
}

static TexelTaps* columnTaps(RenderState* render) {
  return reinterpret_cast<TexelTaps*>(lineBufferWords(render) + render->columnTableStart);
}

void buildTextureColumns(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  if (render->lineBuffer.address == nullptr) return;
  const int32_t scale = scaleFactor(settings->textureScale);
  render->textureScaleFactor = scale;
  const int64_t start = int64_t{settings->textureOffsetX} * kTexelUnits +
                        previewShift(session, settings->previewOriginX, scale);
  const ReliefPlacement placement = reliefPlacement(session, scale);
  const int64_t left = render->preview.place.left;
  TexelTaps* columns = columnTaps(render);
  uint8_t* firsts = reliefFirstTexels(session);
  uint8_t* parts = reliefParts(session);
  for (int32_t x = 0; x <= render->renderWidth; ++x) {
    columns[x] = texelTaps(start + positionOf(settings, left + x, scale), settings->textureWidth);
    firsts[x] = columns[x].index[0];
    parts[x] = static_cast<uint8_t>(columnPart(placement, left + x));
  }
  prepareReliefRows(session, (start + positionOf(settings, left, scale)) >> kTexelShift);
}

static void plainReliefRow(SessionRecord* session, const ReliefPlacement& placement,
                           const TexelTaps& taps, int32_t rowPart, Word32 depth, Word32 divisor) {
  RenderState* render = &session->render;
  const auto* table = static_cast<const uint8_t*>(render->textureTable.address);
  const uint8_t* rows[4];
  for (int32_t i = 0; i < 4; ++i) rows[i] = table + kTextureSide * taps.index[i];
  const TexelTaps* columns = columnTaps(render);
  int16_t* cells = fieldRow(render, render->currentRow);
  for (int32_t x = 0; x <= render->renderWidth; ++x) {
    const uint8_t* c = columns[x].index;
    const int32_t part = columnPart(placement, render->preview.place.left + x);
    int32_t across[4];
    for (int32_t i = 0; i < 4; ++i) {
      across[i] = cubic(rows[i][c[0]], rows[i][c[1]], rows[i][c[2]], rows[i][c[3]], part);
    }
    const int32_t level = cubic(across[0], across[1], across[2], across[3], rowPart);
    const Word32 press = Word32(2) * (Word32(level) * depth / divisor);
    cells[x] = saturateToInt16(int64_t{cells[x]} - press.value);
  }
}

void textureReliefRow(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  if (settings->textureReliefActive != 1 || settings->textureChoice == kTextureChoiceNone ||
      settings->texturePicture == nullptr || render->textureTable.address == nullptr ||
      render->lineBuffer.address == nullptr || render->heightField.address == nullptr) {
    return;
  }
  const int32_t scale = render->textureScaleFactor;
  const Word32 depth = Word32(settings->texture) * kReliefFactor / scale;
  const ReliefPlacement placement = reliefPlacement(session, scale);
  const int64_t v = placement.firstRow +
                    positionOf(settings, render->preview.place.top + render->currentRow, scale);
  const TexelTaps taps = texelTaps(v, settings->textureHeight);
  const auto rowPart = static_cast<int32_t>(v & (kTexelUnits - 1));
  const bool scaleSuits =
      settings->previewScale >= 1 && settings->previewScale <= kLargestFastScale;
  if (render->reliefIsFast != 0 && absolute(depth) <= kLargestFastDepth && scaleSuits) {
    pressReliefRow(session, taps.index, rowPart, depth.value);
    return;
  }
  const Word32 divisor = Word32(settings->previewScale) * kReliefDivisor;
  plainReliefRow(session, placement, taps, rowPart, depth, divisor);
}
