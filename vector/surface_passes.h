// surface_passes: what happens to finished rows of the height field: smoothing, the bevel profile,
// the relief of the texture.

#pragma once

#include <cstdint>

// Negated cubic weights of a fraction f (0 to 127) for four neighbours; their sum is -128 x 256.
// Negated, because then the largest, 32768, fits 16 bits.
struct CubicWeights {
  int16_t w[4];
};

// Two of each column's weights side by side, up to the next multiple of kWeightedColumns.
constexpr int32_t kWeightedColumns = 8;
struct TexelWeights {
  const int16_t* even;  // of its texels 0 and 2
  const int16_t* odd;   // of its texels 1 and 3
};

struct SurfacePasses {
  // dst[i], 0 <= i < count, from the 3 x 3 neighbourhood of middle[i]. All three rows are readable
  // from index -1 to count and hold 0 to 3000; dst overlaps none of them.
  void (*smoothRow)(const int16_t* above, const int16_t* middle, const int16_t* below,
                    int32_t count, int16_t* dst);
  // cells[i] = table[cells[i]] for cells of 0 to `last`; others take the nearest entry.
  void (*mapRow)(int16_t* cells, int32_t count, const int16_t* table, int32_t last);
  // 64 times the cubic through four texels, one result per column. texels: a row that goes on for
  // three texels behind the last first one. first[i]: 0 to 255.
  void (*resampleRow)(const uint8_t* texels, const uint8_t* first, const TexelWeights& weights,
                      int32_t count, int16_t* dst);
  // Subtracts 2 x (level x depth / (scale x 65536)) from each cell, each division toward zero; the
  // level is the cubic through the four rows' values. |depth| <= 400, 1 <= scale <= 32767.
  void (*pressRow)(const int16_t* const rows[4], const CubicWeights& weights, int32_t depth,
                   int32_t scale, int32_t count, int16_t* cells);
};
