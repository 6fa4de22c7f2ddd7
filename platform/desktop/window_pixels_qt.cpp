#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/desktop/window_record_qt.h"

void presentPixels(Window* window, const PixelTarget& target, const Rectangle& part) {
  QImage& pixels = window->pixels;
  const int32_t left = std::max<int32_t>(part.left, 0);
  const int32_t top = std::max<int32_t>(part.top, 0);
  const int32_t right = std::min({int32_t{part.right}, target.width, pixels.width()});
  const int32_t bottom = std::min({int32_t{part.bottom}, target.height, pixels.height()});
  if (left >= right || top >= bottom) return;
  for (int32_t y = top; y < bottom; ++y) {
    const uint8_t* from = target.rgb + 3 * (int64_t{y} * target.width + left);
    std::memcpy(pixels.scanLine(y) + 3 * left, from, 3 * static_cast<size_t>(right - left));
  }
  window->widget->update(left + window->frame, top + window->frame, right - left, bottom - top);
}

void* beginHostDrawing(Window*, PixelTarget* target) {
  return target;
}

void endHostDrawing(Window*, PixelTarget*, void*) {
}

void paintPixels(const Window& window, QPainter* painter) {
  const double scale = painter->deviceTransform().m11();
  painter->setRenderHint(QPainter::SmoothPixmapTransform, scale != std::round(scale));
  painter->drawImage(window.frame, window.frame, window.pixels);
}
