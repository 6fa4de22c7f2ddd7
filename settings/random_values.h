// random_values: random settings.

#pragma once

#include <cstdint>

struct Color16;

// A number from lo to hi; never above lo + 255. `hi` below `lo` gives `lo`.
int32_t randomInRange(int32_t lo, int32_t hi);

// Each channel a multiple of 256, 0 to 65280.
void randomColor(Color16* color);
