// compose_pixel: finishes a lit pixel: tarnish, over-exposure, grey, the twelve blend modes.

#pragma once

#include <cstdint>

#include "settings/effect_settings.h"
#include "shading/lit_pixel.h"

// Writes the pixel's samples, one for grey and three for RGB, each 0 to 255.
// proceduralWeight: 256 entries by source value.
void composePixel(const LitPixel& lit, const RowLights& lights, int32_t blendMode,
                  const int16_t* proceduralWeight, bool grey, uint8_t* samples);
