// light_passes: from height-field cells to slopes, highlights and shades.

#pragma once

#include <cstdint>

#include "vector/shading_chunk.h"

// Of the whole amount of tarnish, in the final render.
constexpr int32_t kLargestTarnishStrength = 1280;

struct LightPasses {
  // Whether the cells of columns 0 to `count` of two rows lie within kGentleStep of each other,
  // as far as a stencil looks.
  bool (*isGentle)(const int16_t* upper, const int16_t* lower, int32_t count);
  // amounts[c], 2 <= c < count, 0 to 256: how hollow the field is around cell c of the middle of
  // five rows, times strength / 4096. Returns the largest hollow.
  int32_t (*tarnishRow)(const int16_t* const rows[5], int32_t count, int32_t strength,
                        int32_t* amounts);
  ShadingStage steepness;
  ShadingStage opaqueLights;  // toward, shade, front
  ShadingStage glassyLights;  // and back, clear, gathered
};
