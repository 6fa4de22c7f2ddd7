// drawn_letters: the letters of the name, built from strokes of a broad pen.

#pragma once

#include <string>

#include "resources/artwork/drawing/raster.h"

// A word with its first stroke at `left` and its feet on `baseline`; `size` is the height of a
// small letter in pixels. Throws std::runtime_error for a character that has no letter.
Shape wordShape(const std::string& word, double left, double baseline, double size);

// Width of the strokes' middle lines.
double wordWidth(const std::string& word, double size);
