#include "pictures/sources/bitmap_file.h"

#include <algorithm>
#include <cstdlib>

#include "pictures/area_resampling.h"
#include "pictures/picture_surface.h"
#include "platform/bitmap_decoder.h"

static void copyAtOwnSize(const DecodedBitmap& bitmap, PictureSurface* surface) {
  const int32_t columns = std::min(bitmap.width, surface->width);
  const int32_t rows = std::min(bitmap.height, surface->height);
  for (int32_t y = 0; y < rows; ++y) {
    const uint8_t* source = bitmap.rgb + int64_t{3} * bitmap.width * y;
    std::copy_n(source, 3 * columns, surfacePixel(surface, 0, y));
  }
}

int32_t loadBitmapFile(const char* path, PictureSurface* surface, int32_t* width, int32_t* height,
                       bool keepSize) {
  if (path == nullptr || path[0] == 0 || surface == nullptr) return kBitmapFailed;
  DecodedBitmap bitmap = {};
  if (!decodeBitmapFile(path, &bitmap)) return kBitmapFailed;
  if (keepSize) {
    copyAtOwnSize(bitmap, surface);
    *width = std::clamp(bitmap.width, 1, kLargestPictureSide);
    *height = std::clamp(bitmap.height, 1, kLargestPictureSide);
  } else {
    resampleByArea(bitmap, surface, *width, *height);
  }
  std::free(bitmap.rgb);
  return kBitmapLoaded;
}
