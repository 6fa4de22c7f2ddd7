// picture_files: reads the picture files that the build embeds: bitmaps of 24 bits or 8 bits with a
// palette, icons and cursors of 32 bits or of 24 bits with a mask, none of them compressed.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct FilePicture {
  int32_t width;
  int32_t height;
  std::vector<uint8_t> rgb;       // rows from the top
  std::vector<uint8_t> coverage;  // empty for a bitmap
  int32_t hotX;
  int32_t hotY;
};

// Each throws std::runtime_error with the reason when a file is not what it should be.
FilePicture readBitmapFile(const std::vector<uint8_t>& file);

// Of several pictures the one of 32 x 32, otherwise the first. An icon's coverage is 0 or 255.
FilePicture readIconFile(const std::vector<uint8_t>& file);

// As an icon, with its hot spot, and the coverage as it stands.
FilePicture readCursorFile(const std::vector<uint8_t>& file);
