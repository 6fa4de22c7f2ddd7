// rectangle: the rectangle and point of the host's interface, and the few operations on them.
// A rectangle excludes its bottom row and right column.

#pragma once

#include <cstdint>

struct Rectangle {
  int16_t top;
  int16_t left;
  int16_t bottom;
  int16_t right;
};

struct Point {
  int16_t v;  // vertical first, as hosts lay it out
  int16_t h;
};

// Fills a rectangle; false only when none is given.
bool setRect(Rectangle* rect, int16_t left, int16_t top, int16_t right, int16_t bottom);

// Moves a rectangle by dh to the right and dv downward. Coordinates stop at the 16-bit limits.
void offsetRect(Rectangle* rect, int32_t dh, int32_t dv);

// True when top <= v < bottom and left <= h < right.
bool pointInRect(Point point, const Rectangle* rect);

// The common part of two rectangles; all zero when they have none.
Rectangle intersectRects(const Rectangle& a, const Rectangle& b);

inline bool isEmptyRect(const Rectangle& rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}
