#include "hosts/windows_host/context_drawing.h"

#include <vector>

#include "platform/windows/windows_api.h"

void drawOnContext(const HostPicture& shown, int32_t row, int32_t column, void* context) {
  const BITMAPINFO info = rowsFromTop(shown.width, shown.height, 32);
  std::vector<uint32_t> pixels;
  const auto planes = static_cast<size_t>(shown.planes);
  for (size_t at = 0; at + planes <= shown.samples.size(); at += planes) {
    const uint8_t* from = &shown.samples[at];
    const bool grey = planes < 3;
    pixels.push_back(uint32_t{from[0]} << 16 | uint32_t{from[grey ? 0 : 1]} << 8 |
                     from[grey ? 0 : 2]);
  }
  SetDIBitsToDevice(static_cast<HDC>(context), column, row, static_cast<DWORD>(shown.width),
                    static_cast<DWORD>(shown.height), 0, 0, 0, static_cast<UINT>(shown.height),
                    pixels.data(), &info, DIB_RGB_COLORS);
}
