#include "dialog/canvas.h"

#include <algorithm>
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

// The rows and columns of a block that can be seen, so that little is done for a small clip.
struct Span {
  int32_t begin;
  int32_t end;
};

static Span visibleColumns(const Canvas* canvas, int32_t x, int32_t width) {
  const int32_t right = std::min({x + width, int32_t{canvas->clip.right}, canvas->target.width});
  return {std::max({x, int32_t{canvas->clip.left}, 0}) - x, right - x};
}

static Span visibleRows(const Canvas* canvas, int32_t y, int32_t height) {
  const int32_t bottom =
      std::min({y + height, int32_t{canvas->clip.bottom}, canvas->target.height});
  return {std::max({y, int32_t{canvas->clip.top}, 0}) - y, bottom - y};
}

void fillArea(Canvas* canvas, const Rectangle& area, Rgb8 colour) {
  const Span rows = visibleRows(canvas, area.top, area.bottom - area.top);
  const Span columns = visibleColumns(canvas, area.left, area.right - area.left);
  for (int32_t row = rows.begin; row < rows.end; ++row) {
    for (int32_t column = columns.begin; column < columns.end; ++column) {
      setPixel(canvas, area.left + column, area.top + row, colour);
    }
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

void drawFocusFrame(Canvas* canvas, const Rectangle& rect) {
  const auto dot = [canvas](int32_t x, int32_t y) {
    if (((x + y) & 1) != 0 || !insideClip(canvas, x, y)) return;
    uint8_t* pixel = pixelOf(canvas, x, y);
    for (int32_t channel = 0; channel < 3; ++channel) pixel[channel] ^= 255;
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
  const Span rows = visibleRows(canvas, y, picture.height);
  const Span columns = visibleColumns(canvas, x, picture.width);
  for (int32_t row = rows.begin; row < rows.end; ++row) {
    for (int32_t column = columns.begin; column < columns.end; ++column) {
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
  const Span rows = visibleRows(canvas, y, height);
  const Span columns = visibleColumns(canvas, x, width);
  for (int32_t row = rows.begin; row < rows.end; ++row) {
    for (int32_t column = columns.begin; column < columns.end; ++column) {
      const uint8_t* pixel = rgb + int64_t{row} * stride + 3 * column;
      setPixel(canvas, x + column, y + row, {pixel[0], pixel[1], pixel[2]});
    }
  }
}

static uint8_t mixed(uint8_t under, uint8_t over, int32_t coverage) {
  return static_cast<uint8_t>((over * coverage + under * (255 - coverage) + 127) / 255);
}

void drawText(Canvas* canvas, const char* text, int32_t x, int32_t y, Rgb8 colour) {
  const int32_t width = textWidth(text);
  const Span rows = visibleRows(canvas, y, kTextLineHeight);
  const Span columns = visibleColumns(canvas, x, width);
  if (rows.begin >= rows.end || columns.begin >= columns.end) return;
  auto* coverage =
      static_cast<uint8_t*>(newModuleBlock(static_cast<uint64_t>(width) * kTextLineHeight));
  if (coverage == nullptr) return;
  drawTextCoverage(text, coverage);
  for (int32_t row = rows.begin; row < rows.end; ++row) {
    for (int32_t column = columns.begin; column < columns.end; ++column) {
      const int32_t share = coverage[row * width + column];
      uint8_t* pixel = pixelOf(canvas, x + column, y + row);
      pixel[0] = mixed(pixel[0], colour.red, share);
      pixel[1] = mixed(pixel[1], colour.green, share);
      pixel[2] = mixed(pixel[2], colour.blue, share);
    }
  }
  freeModuleBlock(coverage);
}
