#include "services/rectangle.h"

#include <algorithm>

#include "services/fixed_point.h"

bool setRect(Rectangle* rect, int16_t left, int16_t top, int16_t right, int16_t bottom) {
  if (rect == nullptr) return false;
  *rect = {top, left, bottom, right};
  return true;
}

void offsetRect(Rectangle* rect, int32_t dh, int32_t dv) {
  rect->left = saturateToInt16(int64_t{rect->left} + dh);
  rect->right = saturateToInt16(int64_t{rect->right} + dh);
  rect->top = saturateToInt16(int64_t{rect->top} + dv);
  rect->bottom = saturateToInt16(int64_t{rect->bottom} + dv);
}

bool pointInRect(Point point, const Rectangle* rect) {
  return rect->top <= point.v && point.v < rect->bottom && rect->left <= point.h &&
         point.h < rect->right;
}

Rectangle intersectRects(const Rectangle& a, const Rectangle& b) {
  const Rectangle common = {std::max(a.top, b.top), std::max(a.left, b.left),
                            std::min(a.bottom, b.bottom), std::min(a.right, b.right)};
  return isEmptyRect(common) ? Rectangle{} : common;
}
