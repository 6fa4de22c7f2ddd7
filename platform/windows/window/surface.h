// surface: pixels that both the core's arrays and the system's drawing can reach.

#pragma once

#include "platform/window.h"
#include "platform/windows/windows_api.h"

struct Surface {
  HDC context;  // draws into the pixels
  HBITMAP bitmap;
  HGDIOBJ previousBitmap;
  uint32_t* pixels;  // rows from the top, 0x00RRGGBB each
  int32_t width;
  int32_t height;
};

// White at first. False, and nothing to free, when the system has no memory left.
bool makeSurface(Surface* surface, int32_t width, int32_t height);
void freeSurface(Surface* surface);

// The part of an area that lies on both a surface and a target of the core's; false when none does.
bool commonPart(const Surface& surface, const PixelTarget& target, Rectangle* area);

// Copy that part one way and the other.
void copyToSurface(Surface* surface, const PixelTarget& target, const Rectangle& area);
void copyFromSurface(const Surface& surface, PixelTarget* target, const Rectangle& area);
