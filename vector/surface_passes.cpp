#include "vector/surface_passes.h"

#include "vector/lane_arithmetic.h"
#include "vector/set_procedures.h"
#include "vector/table_passes.h"
#include "vector/texel_sums.h"

namespace MORVALIS_SET {

// Weights of the 3 x 3 smoothing; their sum is 252.
constexpr int32_t kCornerWeight = 12;
constexpr int32_t kSideWeight = 31;
constexpr int32_t kCentreWeight = 80;

// Truncated, the product with this is the quotient by 252 for every sum of nine cells: half a step
// keeps it away from whole numbers, by far more than single precision errs.
constexpr float kPerWeightSum = 1.0F / 252;
constexpr float kHalfStep = 0.5F / 252;

static void smoothRow(const int16_t* above, const int16_t* middle, const int16_t* below,
                      int32_t count, int16_t* __restrict dst) {
  for (int32_t i = 0; i < count; ++i) {
    // Four cells fit 16 bits.
    const auto corners =
        static_cast<int16_t>(above[i - 1] + above[i + 1] + below[i - 1] + below[i + 1]);
    const auto sides = static_cast<int16_t>(above[i] + below[i] + middle[i - 1] + middle[i + 1]);
    const int32_t sum = kCornerWeight * corners + kSideWeight * sides + kCentreWeight * middle[i];
    dst[i] = static_cast<int16_t>(
        static_cast<int32_t>(static_cast<float>(sum) * kPerWeightSum + kHalfStep));
  }
}

// Columns worked on at a time.
constexpr int32_t kChunk = 256;

static void mapRow(int16_t* cells, int32_t count, const int16_t* table, int32_t last) {
  const auto highest = static_cast<int16_t>(last);
  uint16_t entries[kChunk];
  for (int32_t start = 0; start < count; start += kChunk) {
    const int32_t n = count - start < kChunk ? count - start : kChunk;
    int16_t* chunk = cells + start;
    for (int32_t i = 0; i < n; ++i) {
      entries[i] = static_cast<uint16_t>(least(most(chunk[i], 0), highest));
    }
    for (int32_t i = 0; i < n; ++i) chunk[i] = table[entries[i]];
  }
}

// The divisor 512 of the cubic, and the sign of its weights.
static inline int32_t cubicOf(int32_t negatedSum) {
  return -((negatedSum + ((negatedSum >> 31) & 511)) >> 9);
}

static void resampleRow(const uint8_t* texels, const uint8_t* first, const TexelWeights& weights,
                        int32_t count, int16_t* __restrict dst) {
  int32_t four[kChunk] = {};
  int32_t sums[kChunk];
  for (int32_t start = 0; start < count; start += kChunk) {
    const int32_t n = count - start < kChunk ? count - start : kChunk;
    const int16_t* even = weights.even + int64_t{2} * start;
    const int16_t* odd = weights.odd + int64_t{2} * start;
    for (int32_t i = 0; i < n; ++i) four[i] = loadWord(texels + first[start + i]);
    for (int32_t i = 0; i < n; i += kWeightedColumns) {
      weighTexels(four + i, even + 2 * i, odd + 2 * i, sums + i);
    }
    for (int32_t i = 0; i < n; ++i) dst[start + i] = static_cast<int16_t>(cubicOf(sums[i]));
  }
}

// a - b, limited to 16 bits; b is at least -32767.
static inline int16_t limitedDifference(int16_t a, int16_t b) {
  const int16_t low = static_cast<int16_t>(most(b, 0) - 32768);
  const int16_t high = static_cast<int16_t>(least(b, 0) + 32767);
  return static_cast<int16_t>(least(most(a, low), high) - b);
}

static void pressRow(const int16_t* const rows[4], const CubicWeights& weights, int32_t depth,
                     int32_t scale, int32_t count, int16_t* __restrict cells) {
  const int16_t* r0 = rows[0];
  const int16_t* r1 = rows[1];
  const int16_t* r2 = rows[2];
  const int16_t* r3 = rows[3];
  const int16_t w0 = weights.w[0];
  const int16_t w1 = weights.w[1];
  const int16_t w2 = weights.w[2];
  const int16_t w3 = weights.w[3];
  const auto divisor = static_cast<float>(scale);
  int16_t whole[kChunk];
  for (int32_t start = 0; start < count; start += kChunk) {
    const int32_t n = count - start < kChunk ? count - start : kChunk;
    for (int32_t i = 0; i < n; ++i) {
      const int32_t level = cubicOf(r0[start + i] * w0 + r1[start + i] * w1 + r2[start + i] * w2 +
                                    r3[start + i] * w3);
      const int32_t pressed = level * depth;
      whole[i] = static_cast<int16_t>((pressed + ((pressed >> 31) & 65535)) >> 16);
    }
    if (scale != 1) {
      // Whole numbers of 14 bits: their quotient in single precision never rounds up to the next.
      for (int32_t i = 0; i < n; ++i) {
        whole[i] = static_cast<int16_t>(static_cast<float>(whole[i]) / divisor);
      }
    }
    for (int32_t i = 0; i < n; ++i) {
      cells[start + i] = limitedDifference(cells[start + i], static_cast<int16_t>(2 * whole[i]));
    }
  }
}

const SurfacePasses* surfacePasses() {
  static constexpr SurfacePasses kPasses = {smoothRow, mapRow, resampleRow, pressRow};
  return &kPasses;
}

}  // namespace MORVALIS_SET
