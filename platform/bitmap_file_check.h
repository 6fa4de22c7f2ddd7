// bitmap_file_check: what the systems' own decoders do not look at in a Windows bitmap file. They
// fill the rows that a cut-off file lacks with nothing, and report success.

#pragma once

#include <cstdint>

// Whether a file begins as a Windows bitmap does, with sides of 1 to kLargestBitmapSide pixels, and
// every row that the header promises is there, of compressed rows as many as runs may leave out.
// False when the file cannot be read.
bool bitmapFileIsSound(const char* path);

// Whether so many bytes of runs are believed to make so many pixels. They may end early, and skip
// rows, so that a few bytes could claim any size.
bool runsMayHold(int64_t pixels, int64_t bytes);
