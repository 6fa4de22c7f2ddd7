// bitmap_file_check: what the systems' own decoders do not look at in a Windows bitmap file. They
// fill the rows that a cut-off file lacks with nothing, and report success.

#pragma once

// Whether a file begins as a Windows bitmap does, with sides of 1 to kLargestBitmapSide pixels, and
// every row that the header promises is there. Compressed rows are not counted. False when the file
// cannot be read.
bool bitmapFileIsSound(const char* path);
