#include "dialog/controls/canvas.h"

#include <algorithm>
#include <cstdlib>

#include "dialog/dialog_scale.h"
#include "pictures/sources/scaled_pictures.h"
#include "platform/dialog_text.h"
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

// As wide as a pen, to the right and down.
static void setDot(Canvas* canvas, int32_t x, int32_t y, int32_t width, Rgb8 colour) {
  for (int32_t row = 0; row < width; ++row) {
    for (int32_t column = 0; column < width; ++column) {
      setPixel(canvas, x + column, y + row, colour);
    }
  }
}

static void drawLineOfWidth(Canvas* canvas, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                            int32_t width, Rgb8 colour) {
  const int32_t dx = std::abs(x1 - x0);
  const int32_t dy = std::abs(y1 - y0);
  const int32_t stepX = x0 < x1 ? 1 : -1;
  const int32_t stepY = y0 < y1 ? 1 : -1;
  int32_t error = dx - dy;
  while (x0 != x1 || y0 != y1) {
    setDot(canvas, x0, y0, width, colour);
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

void drawLine(Canvas* canvas, int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb8 colour) {
  drawLineOfWidth(canvas, x0, y0, x1, y1, pen(), colour);
}

static void drawThinBevel(Canvas* canvas, const Rectangle& rect, Rgb8 topLeft, Rgb8 bottomRight) {
  const auto line = [canvas](int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb8 colour) {
    drawLineOfWidth(canvas, x0, y0, x1, y1, 1, colour);
  };
  line(rect.left, rect.bottom, rect.left, rect.top, topLeft);
  line(rect.left, rect.top, rect.right, rect.top, topLeft);
  line(rect.right, rect.top, rect.right, rect.top + 1, topLeft);
  line(rect.right, rect.top + 1, rect.right, rect.bottom, bottomRight);
  line(rect.right, rect.bottom, rect.left, rect.bottom, bottomRight);
}

void drawBevel(Canvas* canvas, const Rectangle& rect, Rgb8 topLeft, Rgb8 bottomRight) {
  for (int32_t i = 0; i < pen(); ++i) {
    const Rectangle ring = {static_cast<int16_t>(rect.top + i), static_cast<int16_t>(rect.left + i),
                            static_cast<int16_t>(rect.bottom - i),
                            static_cast<int16_t>(rect.right - i)};
    drawThinBevel(canvas, ring, topLeft, bottomRight);
  }
}

void drawFocusFrame(Canvas* canvas, const Rectangle& rect) {
  const int32_t width = pen();
  const auto dot = [&](int32_t x, int32_t y) {
    const int32_t place =
        rect.left / width + (x - rect.left) / width + rect.top / width + (y - rect.top) / width;
    if ((place & 1) != 0 || !insideClip(canvas, x, y)) return;
    uint8_t* pixel = pixelOf(canvas, x, y);
    for (int32_t channel = 0; channel < 3; ++channel) pixel[channel] ^= 255;
  };
  for (int32_t i = 0; i < width; ++i) {
    for (int32_t x = rect.left; x < rect.right; ++x) {
      dot(x, rect.top + i);
      dot(x, rect.bottom - 1 - i);
    }
    for (int32_t y = rect.top + width; y < rect.bottom - width; ++y) {
      dot(rect.left + i, y);
      dot(rect.right - 1 - i, y);
    }
  }
}

static uint8_t mixed(uint8_t under, uint8_t over, int32_t coverage) {
  return static_cast<uint8_t>((over * coverage + under * (255 - coverage) + 127) / 255);
}

static void mixPixel(uint8_t* pixel, const Rgb8& colour, int32_t coverage) {
  pixel[0] = mixed(pixel[0], colour.red, coverage);
  pixel[1] = mixed(pixel[1], colour.green, coverage);
  pixel[2] = mixed(pixel[2], colour.blue, coverage);
}

void drawResource(Canvas* canvas, int32_t id, int32_t x, int32_t y) {
  ResourcePicture picture;
  if (!findScaledPicture(id, dialogScale(), &picture)) return;
  const Span rows = visibleRows(canvas, y, picture.height);
  const Span columns = visibleColumns(canvas, x, picture.width);
  for (int32_t row = rows.begin; row < rows.end; ++row) {
    for (int32_t column = columns.begin; column < columns.end; ++column) {
      const int32_t at = row * picture.width + column;
      const int32_t coverage = picture.coverage != nullptr ? picture.coverage[at] : 255;
      const uint8_t* rgb = picture.rgb + 3 * at;
      mixPixel(pixelOf(canvas, x + column, y + row), {rgb[0], rgb[1], rgb[2]}, coverage);
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

void drawText(Canvas* canvas, const char* text, int32_t x, int32_t y, Rgb8 colour) {
  const int32_t width = textWidth(text, dialogScale());
  const int32_t height = textLineHeight(dialogScale());
  const Span rows = visibleRows(canvas, y, height);
  const Span columns = visibleColumns(canvas, x, width);
  if (rows.begin >= rows.end || columns.begin >= columns.end) return;
  auto* coverage = static_cast<uint8_t*>(
      newModuleBlock(static_cast<uint64_t>(width) * static_cast<uint32_t>(height)));
  if (coverage == nullptr) return;
  drawTextCoverage(text, dialogScale(), coverage);
  for (int32_t row = rows.begin; row < rows.end; ++row) {
    for (int32_t column = columns.begin; column < columns.end; ++column) {
      mixPixel(pixelOf(canvas, x + column, y + row), colour, coverage[row * width + column]);
    }
  }
  freeModuleBlock(coverage);
}
