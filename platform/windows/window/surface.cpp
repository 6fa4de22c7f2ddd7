#include "platform/windows/window/surface.h"

#include <algorithm>
#include <cstring>

constexpr uint16_t kBitsPerPixel = 32;

bool makeSurface(Surface* surface, int32_t width, int32_t height) {
  *surface = {};
  const BITMAPINFO info = rowsFromTop(width, height, kBitsPerPixel);
  void* pixels = nullptr;
  HDC context = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  if (context == nullptr || bitmap == nullptr) {
    if (bitmap != nullptr) DeleteObject(bitmap);
    if (context != nullptr) DeleteDC(context);
    return false;
  }
  *surface = {context, bitmap, SelectObject(context, bitmap), static_cast<uint32_t*>(pixels),
              width,   height};
  std::memset(pixels, 0xFF,
              sizeof(uint32_t) * static_cast<size_t>(width) * static_cast<size_t>(height));
  return true;
}

void freeSurface(Surface* surface) {
  if (surface->context == nullptr) return;
  SelectObject(surface->context, surface->previousBitmap);
  DeleteObject(surface->bitmap);
  DeleteDC(surface->context);
  *surface = {};
}

bool commonPart(const Surface& surface, const PixelTarget& target, Rectangle* area) {
  const auto side = [](int32_t value) {
    return static_cast<int16_t>(std::clamp<int32_t>(value, 0, INT16_MAX));
  };
  *area = intersectRects(*area, {0, 0, side(std::min(surface.height, target.height)),
                                 side(std::min(surface.width, target.width))});
  return !isEmptyRect(*area);
}

void copyToSurface(Surface* surface, const PixelTarget& target, const Rectangle& area) {
  GdiFlush();  // drawing that the system has put off would come after ours
  for (int32_t y = area.top; y < area.bottom; ++y) {
    const uint8_t* from = target.rgb + 3 * (int64_t{y} * target.width + area.left);
    uint32_t* to = surface->pixels + int64_t{y} * surface->width + area.left;
    for (int32_t x = area.left; x < area.right; ++x, from += 3) {
      *to++ = uint32_t{from[0]} << 16 | uint32_t{from[1]} << 8 | from[2];
    }
  }
}

void copyFromSurface(const Surface& surface, PixelTarget* target, const Rectangle& area) {
  GdiFlush();
  for (int32_t y = area.top; y < area.bottom; ++y) {
    const uint32_t* from = surface.pixels + int64_t{y} * surface.width + area.left;
    uint8_t* to = target->rgb + 3 * (int64_t{y} * target->width + area.left);
    for (int32_t x = area.left; x < area.right; ++x, ++from) {
      *to++ = static_cast<uint8_t>(*from >> 16);
      *to++ = static_cast<uint8_t>(*from >> 8);
      *to++ = static_cast<uint8_t>(*from);
    }
  }
}
