#include "vector/surface_passes.h"

#include "vector/set_procedures.h"
#include "vector/table_passes.h"

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

static void mapRow(int16_t* cells, int32_t count, const int16_t* table, int32_t last) {
  for (int32_t i = 0; i < count; ++i) {
    const int32_t cell = cells[i];
    cells[i] = table[cell < 0 ? 0 : cell > last ? last : cell];
  }
}

// Columns worked on at a time.
constexpr int32_t kChunk = 256;

static int32_t dividedBy512(int32_t value) {
  return (value + ((value >> 31) & 511)) >> 9;
}

static void resampleRow(const uint8_t* texels, const uint8_t* first, const uint8_t* parts,
                        const CubicWeights* weights, int32_t count, int16_t* __restrict dst) {
  int32_t w[4][kChunk];
  int32_t four[kChunk];
  for (int32_t start = 0; start < count; start += kChunk) {
    const int32_t n = count - start < kChunk ? count - start : kChunk;
    for (int32_t i = 0; i < n; ++i) {
      four[i] = loadWord(texels + first[start + i]);
      const CubicWeights& of = weights[parts[start + i]];
      for (int32_t k = 0; k < 4; ++k) w[k][i] = of.w[k];
    }
    for (int32_t i = 0; i < n; ++i) {
      const int32_t sum = w[0][i] * (four[i] & 255) + w[1][i] * (four[i] >> 8 & 255) +
                          w[2][i] * (four[i] >> 16 & 255) + w[3][i] * (four[i] >> 24 & 255);
      dst[start + i] = static_cast<int16_t>(dividedBy512(sum));
    }
  }
}

static void pressRow(const int16_t* const rows[4], const CubicWeights& weights, int32_t depth,
                     int32_t scale, int32_t count, int16_t* __restrict cells) {
  const int16_t* r0 = rows[0];
  const int16_t* r1 = rows[1];
  const int16_t* r2 = rows[2];
  const int16_t* r3 = rows[3];
  const int32_t w0 = weights.w[0];
  const int32_t w1 = weights.w[1];
  const int32_t w2 = weights.w[2];
  const int32_t w3 = weights.w[3];
  const auto divisor = static_cast<float>(scale);
  for (int32_t i = 0; i < count; ++i) {
    const int32_t level = dividedBy512(w0 * r0[i] + w1 * r1[i] + w2 * r2[i] + w3 * r3[i]);
    const int32_t pressed = level * depth;
    const int32_t whole = (pressed + ((pressed >> 31) & 65535)) >> 16;
    // Whole numbers of 14 bits: their quotient in single precision never rounds up to the next.
    const auto share = static_cast<int32_t>(static_cast<float>(whole) / divisor);
    const int32_t cell = cells[i] - 2 * share;
    cells[i] = static_cast<int16_t>(cell < -32768 ? -32768 : cell > 32767 ? 32767 : cell);
  }
}

const SurfacePasses* surfacePasses() {
  static constexpr SurfacePasses kPasses = {smoothRow, mapRow, resampleRow, pressRow};
  return &kPasses;
}

}  // namespace MORVALIS_SET
