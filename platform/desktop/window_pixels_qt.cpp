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
  const auto side = [](int32_t place) { return static_cast<int16_t>(place); };
  window->widget->update(inUnits(*window, {side(top), side(left), side(bottom), side(right)}));
}

void* beginHostDrawing(Window*, PixelTarget* target) {
  return target;
}

void endHostDrawing(Window*, PixelTarget*, void*) {
}

void paintPixels(const Window& window, QPainter* painter) {
  painter->save();
  painter->scale(1 / window.ratio, 1 / window.ratio);
  const double scale = painter->deviceTransform().m11();  // 1, but for rounding and other screens
  painter->setRenderHint(QPainter::SmoothPixmapTransform,
                         std::abs(scale - std::round(scale)) > 1e-6);
  painter->drawImage(window.frame, window.frame, window.pixels);
  painter->restore();
}
