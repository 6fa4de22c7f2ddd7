// shade_row: one row of the source picture, lit. For each pixel: two coloured lights through
// gradient stencils, the reflection of the environment, highlights, the tint of a thin film,
// caustic light and light through glass; compose_pixel finishes it. Integers with 256 as 1.0.

#pragma once

#include <cstdint>

struct SessionRecord;

// Environment coordinate that a row's or column's first reflection is compared with.
constexpr int32_t kReflectionStart = 16;

// Shades row currentRow. Without the host's buffers nothing is written and the result word becomes
// kMemoryFull.
void shadeRow(SessionRecord* session);
