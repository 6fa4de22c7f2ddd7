#include "platform/bitmap_decoder.h"

#include "platform/bitmap_file_check.h"
#include "platform/windows/pixel_rows.h"

bool decodeBitmapFile(const char* path, DecodedBitmap* bitmap) {
  if (!bitmapFileIsSound(path)) return false;
  auto loaded = static_cast<HBITMAP>(
      LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION));
  if (loaded == nullptr) return false;
  DecodedBitmap decoded = {};
  if (bitmapSize(loaded, &decoded.width, &decoded.height)) {
    decoded.rgb = copyBitmapPixels(loaded, decoded.width, decoded.height);
  }
  DeleteObject(loaded);
  if (decoded.rgb == nullptr) return false;
  *bitmap = decoded;
  return true;
}
