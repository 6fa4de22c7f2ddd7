// bitmap_file: a `.bmp` picture file into a surface.

#pragma once

#include <cstdint>

struct PictureSurface;

constexpr int32_t kBitmapLoaded = 0;
constexpr int32_t kBitmapFailed = 99;
constexpr int32_t kLargestPictureSide = 256;  // what a picture may use of a surface

// Loads a file. With keepSize false it is resampled to exactly *width x *height in the surface's
// top-left corner. With keepSize true it is copied at its own size, cut off at the surface's edges,
// and *width and *height become that size, each limited to 1 to 256.
// kBitmapLoaded, or kBitmapFailed with surface and sizes as they were.
int32_t loadBitmapFile(const char* path, PictureSurface* surface, int32_t* width, int32_t* height,
                       bool keepSize);
