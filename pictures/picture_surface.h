// picture_surface: a picture of fixed size in memory, three bytes (red, green, blue) a pixel.

#pragma once

#include <cstdint>

constexpr int32_t kSurfaceBytesPerPixel = 3;

struct PictureSurface {
  int32_t width;
  int32_t height;
  uint8_t* rgb;  // rows from the top, no padding
};

// A black surface; null when memory runs out.
PictureSurface* newPictureSurface(int32_t width, int32_t height);
void disposePictureSurface(PictureSurface* surface);

inline uint8_t* surfacePixel(const PictureSurface* surface, int32_t x, int32_t y) {
  return surface->rgb + kSurfaceBytesPerPixel * (int64_t{y} * surface->width + x);
}

// Sets a grey pixel, the value taken modulo 256.
void setGreyPixel(PictureSurface* surface, int32_t x, int32_t y, int32_t value);

// Copies the block (0, 0) - (width, height) to (x, y), as much of it as lies on the surface.
void copyFirstBlock(PictureSurface* surface, int32_t width, int32_t height, int32_t x, int32_t y);
