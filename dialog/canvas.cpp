#include "dialog/canvas.h"

#include <cstdlib>

#include "platform/dialog_text.h"
#include "platform/resource_access.h"
#include "services/memory_blocks.h"

static bool insideClip(const Canvas* canvas, int32_t x, int32_t y) {
  return x >= canvas->clip.left && x < canvas->clip.right && y >= canvas->clip.top &&
         y < canvas->clip.bottom && x >= 0 && x < canvas->target.width && y >= 0 &&
         y < canvas->target.height;
}

static uint8_t* pixelOf(Canvas* canvas, int32_t x, int32_t y) {
  return canvas->target.rgb + 3 * (int64_t{y} * canvas->target.width + x);
}

static void setPixel(Canvas* canvas, int32_t x, int32_t y, Rgb8 colour) {
  if (!insideClip(canvas, x, y)) return;
  uint8_t* pixel = pixelOf(canvas, x, y);
  pixel[0] = colour.red;
  pixel[1] = colour.green;
  pixel[2] = colour.blue;
}

void fillArea(Canvas* canvas, const Rectangle& area, Rgb8 colour) {
  for (int32_t y = area.top; y < area.bottom; ++y) {
    for (int32_t x = area.left; x < area.right; ++x) setPixel(canvas, x, y, colour);
  }
}

void drawLine(Canvas* canvas, int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb8 colour) {
  const int32_t dx = std::abs(x1 - x0);
  const int32_t dy = std::abs(y1 - y0);
  const int32_t stepX = x0 < x1 ? 1 : -1;
  const int32_t stepY = y0 < y1 ? 1 : -1;
  int32_t error = dx - dy;
  while (x0 != x1 || y0 != y1) {
    setPixel(canvas, x0, y0, colour);
    const int32_t doubled = 2 * error;
    if (doubled > -dy) {
      error -= dy;
      x0 += stepX;
    }
    if (doubled < dx) {
      error += dx;
      y0 += stepY;
    }
  }
}

void drawBevel(Canvas* canvas, const Rectangle& rect, Rgb8 topLeft, Rgb8 bottomRight) {
  drawLine(canvas, rect.left, rect.bottom, rect.left, rect.top, topLeft);
  drawLine(canvas, rect.left, rect.top, rect.right, rect.top, topLeft);
  drawLine(canvas, rect.right, rect.top, rect.right, rect.top + 1, topLeft);
  drawLine(canvas, rect.right, rect.top + 1, rect.right, rect.bottom, bottomRight);
  drawLine(canvas, rect.right, rect.bottom, rect.left, rect.bottom, bottomRight);
}

void drawFrame(Canvas* canvas, const Rectangle& rect, Rgb8 colour) {
  const auto right = static_cast<int16_t>(rect.right - 1);
  const auto bottom = static_cast<int16_t>(rect.bottom - 1);
  drawBevel(canvas, {rect.top, rect.left, bottom, right}, colour, colour);
}

void drawFocusFrame(Canvas* canvas, const Rectangle& rect) {
  const auto dot = [canvas](int32_t x, int32_t y) {
    if (((x + y) & 1) == 0) setPixel(canvas, x, y, kBlack);
  };
  for (int32_t x = rect.left; x < rect.right; ++x) {
    dot(x, rect.top);
    dot(x, rect.bottom - 1);
  }
  for (int32_t y = rect.top + 1; y < rect.bottom - 1; ++y) {
    dot(rect.left, y);
    dot(rect.right - 1, y);
  }
}

void drawResource(Canvas* canvas, int32_t id, int32_t x, int32_t y) {
  ResourcePicture picture;
  if (!findResourcePicture(id, &picture)) return;
  for (int32_t row = 0; row < picture.height; ++row) {
    for (int32_t column = 0; column < picture.width; ++column) {
      const int32_t at = row * picture.width + column;
      if (picture.coverage != nullptr && picture.coverage[at] == 0) continue;
      const uint8_t* rgb = picture.rgb + 3 * at;
      setPixel(canvas, x + column, y + row, {rgb[0], rgb[1], rgb[2]});
    }
  }
}

void drawIcon(Canvas* canvas, int32_t id, int32_t x, int32_t y) {
  drawResource(canvas, kIconNumbers + id, x, y);
}

void drawPixels(Canvas* canvas, int32_t x, int32_t y, int32_t width, int32_t height,
                const uint8_t* rgb, int32_t stride) {
  for (int32_t row = 0; row < height; ++row) {
    const uint8_t* pixel = rgb + int64_t{row} * stride;
    for (int32_t column = 0; column < width; ++column, pixel += 3) {
      setPixel(canvas, x + column, y + row, {pixel[0], pixel[1], pixel[2]});
    }
  }
}

static uint8_t mixed(uint8_t under, uint8_t over, int32_t coverage) {
  return static_cast<uint8_t>((over * coverage + under * (255 - coverage) + 127) / 255);
}

void drawText(Canvas* canvas, const char* text, int32_t x, int32_t y, Rgb8 colour) {
  const int32_t width = textWidth(text);
  if (width <= 0) return;
  auto* coverage =
      static_cast<uint8_t*>(newModuleBlock(static_cast<uint64_t>(width) * kTextLineHeight));
  if (coverage == nullptr) return;
  drawTextCoverage(text, coverage);
  for (int32_t row = 0; row < kTextLineHeight; ++row) {
    for (int32_t column = 0; column < width; ++column) {
      if (!insideClip(canvas, x + column, y + row)) continue;
      const int32_t share = coverage[row * width + column];
      uint8_t* pixel = pixelOf(canvas, x + column, y + row);
      pixel[0] = mixed(pixel[0], colour.red, share);
      pixel[1] = mixed(pixel[1], colour.green, share);
      pixel[2] = mixed(pixel[2], colour.blue, share);
    }
  }
  freeModuleBlock(coverage);
}
