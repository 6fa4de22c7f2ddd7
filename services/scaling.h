// scaling: lengths that are laid out at 100 percent, in the pixels of a finer screen. Everything of
// a dialog and every picture in it is measured with these, so that edges meet.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

constexpr int32_t kPlainScale = 100;  // percent

// From the smallest to the largest; pictures are drawn for each.
constexpr int32_t kScales[] = {kPlainScale, 125, 150, 175, 200, 250, 300};

// Rounded to the nearest pixel, alike on both sides of 0.
constexpr int32_t scaledLength(int32_t length, int32_t scale) {
  return length < 0 ? -scaledLength(-length, scale)
                    : (length * scale + kPlainScale / 2) / kPlainScale;
}

// What a line of one pixel becomes; a line of one and a half is a thin one.
constexpr int32_t scaledPen(int32_t scale) {
  return (scale + kPlainScale / 4) / kPlainScale;
}

// Rectangles of one size keep one size wherever they stand, as the pictures in them do.
constexpr Rectangle scaledRect(const Rectangle& rect, int32_t scale) {
  const int32_t top = scaledLength(rect.top, scale);
  const int32_t left = scaledLength(rect.left, scale);
  return {static_cast<int16_t>(top), static_cast<int16_t>(left),
          static_cast<int16_t>(top + scaledLength(rect.bottom - rect.top, scale)),
          static_cast<int16_t>(left + scaledLength(rect.right - rect.left, scale))};
}
