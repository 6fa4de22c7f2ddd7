// small_letters: the few words that stand in pictures, in letters of seven pixels.

#pragma once

#include <string>

#include "resources/artwork/drawing/raster.h"

int32_t smallTextWidth(const std::string& text);

// Top of the capitals at y. Throws std::runtime_error for a character that has no letter.
void drawSmallText(Picture* picture, const std::string& text, int32_t x, int32_t y, Rgb colour);
