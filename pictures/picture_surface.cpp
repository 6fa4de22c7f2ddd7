#include "pictures/picture_surface.h"

#include <algorithm>
#include <cstring>

#include "services/memory_blocks.h"

PictureSurface* newPictureSurface(int32_t width, int32_t height) {
  const uint64_t pixelBytes = uint64_t{kSurfaceBytesPerPixel} * static_cast<uint32_t>(width) *
                              static_cast<uint32_t>(height);
  auto* surface = static_cast<PictureSurface*>(newModuleBlock(sizeof(PictureSurface) + pixelBytes));
  if (surface == nullptr) return nullptr;
  surface->width = width;
  surface->height = height;
  surface->rgb = reinterpret_cast<uint8_t*>(surface + 1);
  return surface;
}

void disposePictureSurface(PictureSurface* surface) {
  freeModuleBlock(surface);
}

void setGreyPixel(PictureSurface* surface, int32_t x, int32_t y, int32_t value) {
  std::memset(surfacePixel(surface, x, y), static_cast<uint8_t>(value), kSurfaceBytesPerPixel);
}

void copyFirstBlock(PictureSurface* surface, int32_t width, int32_t height, int32_t x, int32_t y) {
  const int32_t columns = std::min(width, surface->width - x);
  const int32_t rows = std::min(height, surface->height - y);
  if (columns <= 0) return;
  for (int32_t row = 0; row < rows; ++row) {
    std::memmove(surfacePixel(surface, x, y + row), surfacePixel(surface, 0, row),
                 static_cast<size_t>(kSurfaceBytesPerPixel) * columns);
  }
}
