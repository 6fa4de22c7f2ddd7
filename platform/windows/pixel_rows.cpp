#include "platform/windows/pixel_rows.h"

#include <cstdlib>
#include <utility>

constexpr uint16_t kBitsPerPixel = 24;

bool bitmapSize(HBITMAP bitmap, int32_t* width, int32_t* height) {
  BITMAP description = {};
  if (GetObjectA(bitmap, sizeof(description), &description) == 0) return false;
  *width = description.bmWidth;
  *height = std::abs(description.bmHeight);
  return true;
}

// The system's rows end at whole 32-bit words and have blue first.
static void packRows(uint8_t* pixels, int32_t width, int32_t height, size_t rowBytes) {
  uint8_t* to = pixels;
  for (int32_t y = 0; y < height; ++y) {
    const uint8_t* from = pixels + static_cast<size_t>(y) * rowBytes;
    for (int32_t x = 0; x < width; ++x, from += 3, to += 3) {
      const uint8_t blue = from[0];
      const uint8_t green = from[1];
      to[0] = from[2];
      to[1] = green;
      to[2] = blue;
    }
  }
}

uint8_t* copyBitmapPixels(HBITMAP bitmap, int32_t width, int32_t height) {
  BITMAPINFO info = rowsFromTop(width, height, kBitsPerPixel);
  const size_t rowBytes = (static_cast<size_t>(width) * 3 + 3) / 4 * 4;
  auto* pixels = static_cast<uint8_t*>(std::malloc(rowBytes * static_cast<size_t>(height)));
  if (pixels == nullptr) return nullptr;
  HDC context = CreateCompatibleDC(nullptr);
  const int rows =
      GetDIBits(context, bitmap, 0, static_cast<UINT>(height), pixels, &info, DIB_RGB_COLORS);
  DeleteDC(context);
  if (rows != height) {
    std::free(pixels);
    return nullptr;
  }
  packRows(pixels, width, height, rowBytes);
  return pixels;
}
