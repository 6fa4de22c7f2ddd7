// bitmap_file: Windows bitmaps in memory, and what icons hold of them, as pixels. Every kind there
// is: 1 to 32 bits, packed or not, with a palette or with colour masks.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct BitmapPixels {
  int32_t width = 0;
  int32_t height = 0;
  bool grey = false;           // a palette of nothing but greys
  std::vector<uint8_t> rgb;    // rows from the top, three bytes a pixel
  std::vector<uint8_t> alpha;  // empty: there is none
  int32_t dotsPerMeterX = 0;
  int32_t dotsPerMeterY = 0;
};

// What the headers say; false when they are none of a bitmap, or of a kind that does not exist.
struct BitmapLayout {
  int32_t width;
  int32_t height;
  bool fromTop;
  int32_t bits;
  int32_t packing;  // 0 none, 1 and 2 runs, 3 colour masks
  uint32_t masks[4];
  size_t palette;  // offsets from the info header
  int32_t colors;
  size_t colorBytes;
  size_t rows;
  int32_t dotsPerMeterX;
  int32_t dotsPerMeterY;
};

// `info` is the info header and all behind it. Rows begin at `rows` of it, 0: behind the palette.
bool readBitmapLayout(const uint8_t* info, size_t bytes, size_t rows, BitmapLayout* layout);

// False when rows are missing.
bool readBitmapPixels(const uint8_t* info, size_t bytes, const BitmapLayout& layout,
                      BitmapPixels* pixels);

// The layout of a whole file, with the file header; `info` becomes the place of the info header.
bool readBitmapFileLayout(const uint8_t* file, size_t bytes, size_t* info, BitmapLayout* layout);
