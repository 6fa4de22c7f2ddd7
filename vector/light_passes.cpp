#include "vector/light_passes.h"

#include "vector/table_passes.h"

namespace MORVALIS_SET {

constexpr int32_t kLightRest = 171;  // share of a light above 256 that is kept, in 1/256
constexpr int32_t kDiagonal = 181;   // 1 / sqrt(2), in 1/256

// Halves, so that no difference of two cells leaves 16 bits.
static bool isGentle(const int16_t* upper, const int16_t* lower, int32_t count) {
  Lane lowest = 0;
  Lane highest = 0;
  for (int32_t i = 0; i < count; ++i) {
    const auto here = static_cast<Lane>(upper[i] >> 1);
    const auto right = static_cast<Lane>((upper[i + 1] >> 1) - here);
    const auto below = static_cast<Lane>((lower[i] >> 1) - here);
    const auto diagonal = static_cast<Lane>((lower[i + 1] >> 1) - here);
    lowest = least(lowest, least(right, least(below, diagonal)));
    highest = most(highest, most(right, most(below, diagonal)));
  }
  // A half may be rounded away from the other.
  constexpr Lane limit = kGentleStep / 2 - 1;
  return lowest >= -limit && highest <= limit;
}

static inline Lane slopeAlong(const StencilLanes& s, Lane dx, Lane dy, Lane dz) {
  const auto sum = static_cast<Lane>(s.x * dx + s.y * dy + s.z * dz);
  const auto size = static_cast<Lane>(
      upperHalf(static_cast<uint16_t>(magnitude(sum) << 3), static_cast<uint16_t>(s.weight << 5)));
  return static_cast<Lane>(sum < 0 ? -size : size);
}

static void steepness(const ShadingRow&, ShadingChunk* chunk) {
  const Lane* __restrict upper = chunk->upper;
  const Lane* __restrict lower = chunk->lower;
  Lane* __restrict dst = chunk->steepness;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    const auto dx = static_cast<Lane>(upper[i + 1] - upper[i]);
    const auto dy = static_cast<Lane>(lower[i] - upper[i]);
    const Lane longer = most(magnitude(dx), magnitude(dy));
    const Lane shorter = least(magnitude(dx), magnitude(dy));
    const Lane sum = shareOf(magnitude(static_cast<Lane>(dx + dy)), kDiagonal);
    const Lane difference = shareOf(magnitude(static_cast<Lane>(dx - dy)), kDiagonal);
    dst[i] = static_cast<Lane>(longer + (shorter >> 1) + most(longer, most(sum, difference)));
  }
}

// Slope, shade, and the highlight of either side.
static void lightSurface(const ShadingRow& row, const LightLanes& light, ShadingChunk* chunk,
                         LightChunk* out) {
  const Lane* __restrict upper = chunk->upper;
  const Lane* __restrict lower = chunk->lower;
  Lane* __restrict toward = out->toward;
  Lane* __restrict shade = out->shade;
  Lane* __restrict front = out->front;
  Lane* __restrict back = out->back;
  const StencilLanes mainStencil = light.main;
  const StencilLanes sideStencil = light.side;
  const StencilLanes turnedStencil = light.turned;
  const Lane elevation = light.elevation;
  const Lane width = row.glareWidth;
  const RowDivision gloss = row.gloss;
  const auto scale = static_cast<uint16_t>(row.glossScale);
  const int32_t clearRest = 256 - row.glass;
  const int32_t rest = row.reflectRest;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    const auto dx = static_cast<Lane>(upper[i + 1] - upper[i]);
    const auto dy = static_cast<Lane>(lower[i] - upper[i]);
    const auto dz = static_cast<Lane>(lower[i + 1] - upper[i]);
    const Lane slope = slopeAlong(mainStencil, dx, dy, dz);
    const Lane side = slopeAlong(sideStencil, dx, dy, dz);
    const Lane turned = slopeAlong(turnedStencil, dx, dy, dz);
    const auto sideHere = static_cast<Lane>((slope > 0 ? side : -side) - elevation);
    const auto turnedHere = static_cast<Lane>((slope > 0 ? turned : -turned) - elevation);
    const Lane a = most(static_cast<Lane>(width - magnitude(sideHere)), 0);
    const Lane b = most(static_cast<Lane>(width - magnitude(turnedHere)), 0);
    const auto both = static_cast<uint16_t>(a * b);
    const uint16_t estimate =
        upperHalf(static_cast<uint16_t>(both << gloss.shift), gloss.multiplier);
    const Lane bright =
        settledQuotient(estimate, static_cast<uint16_t>(both * scale), gloss.divisor);
    const Lane lit = shareOf(most(static_cast<Lane>(slope + 256), 0), clearRest);
    toward[i] = slope;
    shade[i] = shareOf(compressedLane(lit, kLightRest), rest);
    front[i] = static_cast<Lane>(slope > 0 ? bright : 0);
    back[i] = static_cast<Lane>(slope > 0 ? 0 : bright);
  }
}

// Light through the glass, and light gathered behind it.
static void lightGlass(const ShadingRow& row, const LightLanes& light, ShadingChunk* chunk,
                       LightChunk* out) {
  const Lane* __restrict upper = chunk->upper;
  const Lane* __restrict lower = chunk->lower;
  const Lane* __restrict toward = out->toward;
  const Lane* __restrict back = out->back;
  Lane* __restrict clear = out->clear;
  Lane* __restrict gathered = out->gathered;
  const StencilLanes stencil = light.caustic;
  const Lane edge = row.edgeHeight;
  const Lane lowest = row.lowestDepth;
  const Lane highest = row.highestDepth;
  const RowDivision depth = row.depth;
  const bool whole = row.transmit == 65536;
  const auto transmit = static_cast<uint16_t>(row.transmit);
  const auto sharpness = static_cast<uint16_t>(row.causticSharpness << 1);
  const auto gain = static_cast<uint16_t>(row.causticGain << 2);
  const auto level = static_cast<Lane>(255 - row.causticFloor);
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    const Lane x = most(static_cast<Lane>(shareOf(back[i], kLightRest) - toward[i]), 0);
    const Lane limited = least(most(upper[i], lowest), highest);
    const auto deep = static_cast<uint16_t>(magnitude(static_cast<Lane>(edge - limited)));
    // First the depth's share in 1/32768, then x of that.
    const uint16_t share = upperHalf(static_cast<uint16_t>(deep << depth.shift), depth.multiplier);
    const uint16_t estimate = upperHalf(static_cast<uint16_t>(x << 1), share);
    const Lane passed = settledQuotient(
        estimate, static_cast<uint16_t>(static_cast<uint16_t>(x) * uint32_t{deep}), depth.divisor);
    const Lane through = compressedLane(passed, kLightRest);
    clear[i] =
        whole ? through : static_cast<Lane>(upperHalf(static_cast<uint16_t>(through), transmit));
  }
  FOR_LANES (i, lanes) {
    const auto dx = static_cast<Lane>(upper[i + 1] - upper[i]);
    const auto dy = static_cast<Lane>(lower[i] - upper[i]);
    const auto dz = static_cast<Lane>(lower[i + 1] - upper[i]);
    // From 257 on nothing is gathered at any sharpness.
    const Lane slope = least(magnitude(slopeAlong(stencil, dx, dy, dz)), 257);
    const auto lost = static_cast<Lane>(upperHalf(static_cast<uint16_t>(slope << 7), sharpness));
    const Lane q = most(static_cast<Lane>(level - lost), 0);
    const auto squared = static_cast<uint16_t>(q * q);
    const uint16_t amount = upperHalf(static_cast<uint16_t>(squared & ~63), gain);
    gathered[i] = static_cast<Lane>(toward[i] > 0 ? 0 : amount);
  }
}

static void opaqueLights(const ShadingRow& row, ShadingChunk* chunk) {
  for (int32_t k = 0; k < row.lightCount; ++k) {
    lightSurface(row, row.lights[k], chunk, &chunk->lights[k]);
  }
}

static void glassyLights(const ShadingRow& row, ShadingChunk* chunk) {
  for (int32_t k = 0; k < row.lightCount; ++k) {
    lightSurface(row, row.lights[k], chunk, &chunk->lights[k]);
    lightGlass(row, row.lights[k], chunk, &chunk->lights[k]);
  }
}

// A ring minus its centre, as three columns of weights: the middle one, those beside it, the outer.
static int32_t tarnishRow(const int16_t* const rows[5], int32_t count, int32_t strength,
                          int32_t* __restrict amounts) {
  int32_t middle[kChunkColumns];
  int32_t beside[kChunkColumns + 2];
  int32_t outer[kChunkColumns + 4];
  // The strength of more than this is a whole at least, and of less exact in single precision.
  const int32_t full = strength > 0 ? (1 << 20) / strength + 1 : 0;
  const float scale = static_cast<float>(strength) / 4096;
  int32_t largest = 0;
  for (int32_t start = 2; start < count; start += kChunkColumns) {
    const int32_t n = count - start < kChunkColumns ? count - start : kChunkColumns;
    const int16_t* r0 = rows[0] + start - 2;
    const int16_t* r1 = rows[1] + start - 2;
    const int16_t* r2 = rows[2] + start - 2;
    const int16_t* r3 = rows[3] + start - 2;
    const int16_t* r4 = rows[4] + start - 2;
    for (int32_t i = 0; i < n + 4; ++i) outer[i] = 2 * (r1[i] + r3[i]) + 5 * r2[i];
    for (int32_t i = 0; i < n + 2; ++i) {
      beside[i] = 2 * (r0[i + 1] + r4[i + 1]) + 10 * (r1[i + 1] + r3[i + 1]) + 14 * r2[i + 1];
    }
    for (int32_t i = 0; i < n; ++i) {
      middle[i] = 5 * (r0[i + 2] + r4[i + 2]) + 14 * (r1[i + 2] + r3[i + 2]) - 132 * r2[i + 2];
    }
    for (int32_t i = 0; i < n; ++i) {
      const int32_t sum = middle[i] + beside[i] + beside[i + 2] + outer[i] + outer[i + 4];
      const int32_t hollow = sum < 0 ? -sum : 0;
      largest = hollow > largest ? hollow : largest;
      const int32_t counted = hollow < full ? hollow : full;
      const auto amount = static_cast<int32_t>(static_cast<float>(counted) * scale);
      amounts[start + i] = amount < 256 ? amount : 256;
    }
  }
  return largest;
}

const LightPasses* lightPasses() {
  static constexpr LightPasses kPasses = {isGentle, tarnishRow, steepness, opaqueLights,
                                          glassyLights};
  return &kPasses;
}

}  // namespace MORVALIS_SET
