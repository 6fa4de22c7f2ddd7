// bitmap_decoder: what a back end supplies to read a `.bmp` picture file.

#pragma once

#include <cstdint>

// Pixels of a decoded file: rows from the top, three bytes (red, green, blue) a pixel, no padding.
struct DecodedBitmap {
  int32_t width;
  int32_t height;
  uint8_t* rgb;  // from the C library's malloc; whoever asked frees it
};

// Larger pictures are refused: no texture or environment needs more.
constexpr int32_t kLargestBitmapSide = 16384;

// Decodes a Windows bitmap file. False, and nothing to free, when there is none to be had:
// missing, unreadable, not a bitmap, damaged, too large.
bool decodeBitmapFile(const char* path, DecodedBitmap* bitmap);
