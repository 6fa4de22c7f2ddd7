// pixel_rows: the pixels of the system's pictures as the core has them.

#pragma once

#include <cstdint>

#include "platform/windows/windows_api.h"

// Size of a bitmap; false when the handle is none.
bool bitmapSize(HBITMAP bitmap, int32_t* width, int32_t* height);

// Rows from the top, three bytes (red, green, blue) a pixel, from the C library's malloc; null when
// the bitmap cannot be read or memory is short.
uint8_t* copyBitmapPixels(HBITMAP bitmap, int32_t width, int32_t height);
