// bitmap_files: pictures as the system's own programs write them.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Windows bitmaps of 24 bits, and of 8 bits with a palette of greys.
void writeColourBitmap(const std::string& path, int32_t width, int32_t height,
                       const std::vector<uint8_t>& rgb);
void writeGreyBitmap(const std::string& path, int32_t width, int32_t height,
                     const std::vector<uint8_t>& grey);
