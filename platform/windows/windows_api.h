// windows_api: the system's declarations, the same way for every file of this back end. Texts are
// in the system's own character set, as they are in settings files.

#pragma once

#include <cstdint>

#define WIN32_LEAN_AND_MEAN
// The system draws with a procedure of our rectangle's name, which nobody here calls.
#define Rectangle SystemRectangle
#include <windows.h>
#undef Rectangle

// Pixels in rows from the top.
inline BITMAPINFO rowsFromTop(int32_t width, int32_t height, uint16_t bitsPerPixel) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = bitsPerPixel;
  return info;
}

// The module, which carries the resources and owns the window classes.
HINSTANCE moduleInstance();
