#include "resources/artwork/drawing/raster.h"

#include <algorithm>
#include <cmath>

#include "services/scaling.h"

// Along each axis of a pixel, where it is drawn at its own size.
constexpr int32_t kSamples = 8;
constexpr int32_t kSamplesOfFiner = 4;

static int32_t dialogScale = kPlainScale;

void drawAtScale(int32_t scale) {
  dialogScale = scale;
}

int32_t drawnScale() {
  return dialogScale;
}

static uint8_t rounded(double value) {
  return static_cast<uint8_t>(std::clamp(std::floor(value + 0.5), 0.0, 255.0));
}

static size_t offsetOf(const Picture& picture, int32_t x, int32_t y) {
  return static_cast<size_t>(y) * picture.width + x;
}

static bool contains(const Picture& picture, int32_t x, int32_t y) {
  return x >= 0 && y >= 0 && x < picture.width && y < picture.height;
}

Picture newPicture(int32_t width, int32_t height, Rgb ground) {
  Picture picture = {width, height, {}, {}};
  picture.rgb.resize(size_t{3} * width * height);
  fillBox(&picture, {0, 0, width, height}, ground);
  return picture;
}

Picture newScaledPicture(int32_t width, int32_t height, Rgb ground) {
  Picture picture =
      newPicture(scaledLength(width, dialogScale), scaledLength(height, dialogScale), ground);
  picture.scale = dialogScale;
  return picture;
}

Picture newScaledTransparentPicture(int32_t width, int32_t height) {
  Picture picture = newScaledPicture(width, height, {0, 0, 0});
  picture.alpha.resize(static_cast<size_t>(picture.width) * picture.height);
  return picture;
}

Picture newTransparentPicture(int32_t width, int32_t height) {
  Picture picture = newPicture(width, height, {0, 0, 0});
  picture.alpha.resize(static_cast<size_t>(width) * height);
  return picture;
}

// --- Pixels ---------------------------------------------------------------------------------

Rgb pixelAt(const Picture& picture, int32_t x, int32_t y) {
  const uint8_t* p = &picture.rgb[3 * offsetOf(picture, x, y)];
  return {static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
}

static void storeColour(Picture* picture, int32_t x, int32_t y, Rgb colour) {
  uint8_t* p = &picture->rgb[3 * offsetOf(*picture, x, y)];
  p[0] = rounded(colour.red);
  p[1] = rounded(colour.green);
  p[2] = rounded(colour.blue);
}

void setPixel(Picture* picture, int32_t x, int32_t y, Rgb colour) {
  blendPixel(picture, x, y, colour, 1);
}

void blendPixel(Picture* picture, int32_t x, int32_t y, Rgb colour, double coverage) {
  if (!contains(*picture, x, y) || coverage <= 0) return;
  if (picture->alpha.empty()) {
    storeColour(picture, x, y, mixed(pixelAt(*picture, x, y), colour, coverage));
    return;
  }
  uint8_t* alpha = &picture->alpha[offsetOf(*picture, x, y)];
  const double below = *alpha / 255.0 * (1 - coverage);
  storeColour(picture, x, y, mixed(pixelAt(*picture, x, y), colour, coverage / (coverage + below)));
  *alpha = rounded(255 * (coverage + below));
}

int32_t pixelOf(const Picture& picture, int32_t unit) {
  return scaledLength(unit, picture.scale);
}

int32_t penOf(const Picture& picture) {
  return scaledPen(picture.scale);
}

void fillPixels(Picture* picture, const Box& box, Rgb colour) {
  for (int32_t y = box.top; y < box.bottom; ++y) {
    for (int32_t x = box.left; x < box.right; ++x) setPixel(picture, x, y, colour);
  }
}

Box pixelsOf(const Picture& picture, const Box& box) {
  const int32_t left = pixelOf(picture, box.left);
  const int32_t top = pixelOf(picture, box.top);
  return {left, top, left + pixelOf(picture, box.right - box.left),
          top + pixelOf(picture, box.bottom - box.top)};
}

void fillBox(Picture* picture, const Box& box, Rgb colour) {
  fillPixels(picture, pixelsOf(*picture, box), colour);
}

// A line ends where one across its last unit would.
static int32_t endOf(const Picture& picture, int32_t unit) {
  return pixelOf(picture, unit - 1) + penOf(picture);
}

void horizontalLine(Picture* picture, int32_t left, int32_t right, int32_t y, Rgb colour) {
  const int32_t top = pixelOf(*picture, y);
  fillPixels(picture, {pixelOf(*picture, left), top, endOf(*picture, right), top + penOf(*picture)},
             colour);
}

void verticalLine(Picture* picture, int32_t x, int32_t top, int32_t bottom, Rgb colour) {
  const int32_t left = pixelOf(*picture, x);
  fillPixels(picture,
             {left, pixelOf(*picture, top), left + penOf(*picture), endOf(*picture, bottom)},
             colour);
}

void framePixels(Picture* picture, const Box& box, Rgb topLeft, Rgb bottomRight) {
  const int32_t pen = penOf(*picture);
  fillPixels(picture, {box.left, box.bottom - pen, box.right, box.bottom}, bottomRight);
  fillPixels(picture, {box.right - pen, box.top, box.right, box.bottom}, bottomRight);
  fillPixels(picture, {box.left, box.top, box.right - pen, box.top + pen}, topLeft);
  fillPixels(picture, {box.left, box.top, box.left + pen, box.bottom - pen}, topLeft);
}

void frameBox(Picture* picture, const Box& box, Rgb topLeft, Rgb bottomRight) {
  framePixels(picture, pixelsOf(*picture, box), topLeft, bottomRight);
}

// --- Shapes and paints ----------------------------------------------------------------------

static double unitsOf(const Picture& picture, double pixels) {
  return picture.scale == kPlainScale ? pixels : pixels * kPlainScale / picture.scale;
}

static int32_t samplesOf(const Picture& picture) {
  return picture.scale < 2 * kPlainScale ? kSamples : kSamplesOfFiner;
}

static double sampleAt(int32_t pixel, int32_t sample, int32_t samples) {
  return pixel + (sample + 0.5) / samples;
}

static double coveredPart(const Shape& shape, int32_t x, int32_t y, int32_t samples,
                          int32_t scale) {
  const double unit = static_cast<double>(kPlainScale) / scale;
  int32_t inside = 0;
  for (int32_t j = 0; j < samples; ++j) {
    const double sampleY = sampleAt(y, j, samples) * unit;
    for (int32_t i = 0; i < samples; ++i) {
      if (shape(sampleAt(x, i, samples) * unit, sampleY)) ++inside;
    }
  }
  return static_cast<double>(inside) / (samples * samples);
}

void fillShape(Picture* picture, const Shape& shape, const Paint& paint) {
  for (int32_t y = 0; y < picture->height; ++y) {
    for (int32_t x = 0; x < picture->width; ++x) {
      const double covered = coveredPart(shape, x, y, samplesOf(*picture), picture->scale);
      if (covered <= 0) continue;
      const Rgb colour = paint(unitsOf(*picture, x + 0.5), unitsOf(*picture, y + 0.5));
      blendPixel(picture, x, y, colour, covered);
    }
  }
}

void fillShape(Picture* picture, const Shape& shape, Rgb colour) {
  fillShape(picture, shape, [colour](double, double) { return colour; });
}

void fillPaint(Picture* picture, const Box& box, const Paint& paint) {
  const int32_t samples = samplesOf(*picture);
  const double count = samples * samples;
  const Box pixels = pixelsOf(*picture, box);
  for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
    for (int32_t x = pixels.left; x < pixels.right; ++x) {
      Rgb sum = {0, 0, 0};
      for (int32_t j = 0; j < samples; ++j) {
        for (int32_t i = 0; i < samples; ++i) {
          const Rgb colour = paint(unitsOf(*picture, sampleAt(x, i, samples)),
                                   unitsOf(*picture, sampleAt(y, j, samples)));
          sum = {sum.red + colour.red, sum.green + colour.green, sum.blue + colour.blue};
        }
      }
      setPixel(picture, x, y, {sum.red / count, sum.green / count, sum.blue / count});
    }
  }
}

std::vector<uint8_t> coverageOf(const Shape& shape, int32_t width, int32_t height,
                                int32_t samples) {
  std::vector<uint8_t> coverage;
  coverage.reserve(static_cast<size_t>(width) * height);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      coverage.push_back(rounded(255 * coveredPart(shape, x, y, samples, kPlainScale)));
    }
  }
  return coverage;
}

Shape discShape(double x, double y, double radius) {
  return ringShape(x, y, -1, radius);
}

Shape ringShape(double x, double y, double inner, double outer) {
  return [=](double px, double py) {
    const double distance = std::sqrt((px - x) * (px - x) + (py - y) * (py - y));
    return distance <= outer && distance >= inner;
  };
}

Shape lineShape(double x0, double y0, double x1, double y1, double halfWidth) {
  return [=](double px, double py) {
    const double alongX = x1 - x0;
    const double alongY = y1 - y0;
    const double length = alongX * alongX + alongY * alongY;
    double part = 0;
    if (length > 0) {
      part = std::clamp(((px - x0) * alongX + (py - y0) * alongY) / length, 0.0, 1.0);
    }
    const double dx = px - (x0 + alongX * part);
    const double dy = py - (y0 + alongY * part);
    return dx * dx + dy * dy <= halfWidth * halfWidth;
  };
}

Shape roundedBoxShape(double left, double top, double right, double bottom, double radius) {
  return [=](double px, double py) {
    const double dx = std::max({left + radius - px, px - (right - radius), 0.0});
    const double dy = std::max({top + radius - py, py - (bottom - radius), 0.0});
    return px >= left && px <= right && py >= top && py <= bottom &&
           dx * dx + dy * dy <= radius * radius;
  };
}

Shape polygonShape(std::vector<Spot> corners) {
  return [corners = std::move(corners)](double px, double py) {
    bool inside = false;
    for (size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
      const Spot& a = corners[i];
      const Spot& b = corners[j];
      if ((a.y > py) != (b.y > py) && px < (b.x - a.x) * (py - a.y) / (b.y - a.y) + a.x) {
        inside = !inside;
      }
    }
    return inside;
  };
}

Shape eitherShape(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](double x, double y) { return a(x, y) || b(x, y); };
}

Shape bothShape(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](double x, double y) { return a(x, y) && b(x, y); };
}

// --- Whole pictures -------------------------------------------------------------------------

Picture croppedPicture(const Picture& picture, const Box& box) {
  const Box pixels = pixelsOf(picture, box);
  Picture piece = newPicture(pixels.right - pixels.left, pixels.bottom - pixels.top, {0, 0, 0});
  piece.scale = picture.scale;
  for (int32_t y = 0; y < piece.height; ++y) {
    for (int32_t x = 0; x < piece.width; ++x) {
      setPixel(&piece, x, y, pixelAt(picture, pixels.left + x, pixels.top + y));
    }
  }
  return piece;
}

void pastePicture(Picture* picture, const Picture& piece, int32_t x, int32_t y) {
  for (int32_t row = 0; row < piece.height; ++row) {
    for (int32_t column = 0; column < piece.width; ++column) {
      const double coverage =
          piece.alpha.empty() ? 1.0 : piece.alpha[offsetOf(piece, column, row)] / 255.0;
      blendPixel(picture, x + column, y + row, pixelAt(piece, column, row), coverage);
    }
  }
}

Picture reducedPicture(const Picture& picture, int32_t side) {
  Picture small = newPicture(picture.width / side, picture.height / side, {0, 0, 0});
  for (int32_t y = 0; y < small.height; ++y) {
    for (int32_t x = 0; x < small.width; ++x) {
      Rgb sum = {0, 0, 0};
      for (int32_t j = 0; j < side; ++j) {
        for (int32_t i = 0; i < side; ++i) {
          const Rgb colour = pixelAt(picture, x * side + i, y * side + j);
          sum = {sum.red + colour.red, sum.green + colour.green, sum.blue + colour.blue};
        }
      }
      const double count = side * side;
      setPixel(&small, x, y, {sum.red / count, sum.green / count, sum.blue / count});
    }
  }
  return small;
}

struct Share {
  int32_t pixel;
  double part;
};

// What the pixel of a row of `wanted` takes of a row of `given`; the parts are 1 together.
static std::vector<Share> sharesOf(int32_t pixel, int32_t wanted, int32_t given) {
  const double step = static_cast<double>(given) / wanted;
  std::vector<Share> shares;
  if (step < 1) {
    const double at = std::clamp((pixel + 0.5) * step - 0.5, 0.0, given - 1.0);
    const auto first = static_cast<int32_t>(at);
    const double part = at - first;
    shares.push_back({first, 1 - part});
    if (part > 0) shares.push_back({first + 1, part});
    return shares;
  }
  const double begin = pixel * step;
  const double end = std::min((pixel + 1) * step, static_cast<double>(given));
  for (auto at = static_cast<int32_t>(begin); at < end; ++at) {
    const double part = std::min(at + 1.0, end) - std::max(static_cast<double>(at), begin);
    shares.push_back({at, part / step});
  }
  return shares;
}

Picture resampledPicture(const Picture& picture, int32_t width, int32_t height) {
  Picture other = newPicture(width, height, {0, 0, 0});
  for (int32_t y = 0; y < height; ++y) {
    const std::vector<Share> rows = sharesOf(y, height, picture.height);
    for (int32_t x = 0; x < width; ++x) {
      Rgb sum = {0, 0, 0};
      for (const Share& column : sharesOf(x, width, picture.width)) {
        for (const Share& row : rows) {
          const Rgb colour = pixelAt(picture, column.pixel, row.pixel);
          const double part = column.part * row.part;
          sum = {sum.red + colour.red * part, sum.green + colour.green * part,
                 sum.blue + colour.blue * part};
        }
      }
      setPixel(&other, x, y, sum);
    }
  }
  return other;
}

// --- Mathematics ----------------------------------------------------------------------------

double sineOfTurn(double turns) {
  constexpr double kFullTurn = 6.283185307179586;
  double part = turns - std::floor(turns + 0.5);  // -1/2 to 1/2
  if (part > 0.25) part = 0.5 - part;
  if (part < -0.25) part = -0.5 - part;
  const double angle = part * kFullTurn;
  double term = angle;
  double sum = angle;
  for (int32_t n = 2; n <= 20; n += 2) {
    term = -term * angle * angle / (n * (n + 1));
    sum += term;
  }
  return sum;
}

double cosineOfTurn(double turns) {
  return sineOfTurn(turns + 0.25);
}

double smoothRise(double low, double high, double value) {
  const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
  return t * t * (3 - 2 * t);
}

static double cornerNoise(int32_t x, int32_t y, uint32_t seed) {
  uint32_t mix = static_cast<uint32_t>(x) * 0x9E3779B1U + static_cast<uint32_t>(y) * 0x85EBCA77U +
                 seed * 0xC2B2AE3DU;
  mix ^= mix >> 15;
  mix *= 0x2C1B3C6DU;
  mix ^= mix >> 12;
  mix *= 0x297A2D39U;
  mix ^= mix >> 15;
  return (mix & 0xFFFF) / 32767.5 - 1;
}

double smoothNoise(double x, double y, uint32_t seed) {
  const double cellX = std::floor(x);
  const double cellY = std::floor(y);
  const auto i = static_cast<int32_t>(cellX);
  const auto j = static_cast<int32_t>(cellY);
  const double u = smoothRise(0, 1, x - cellX);
  const double w = smoothRise(0, 1, y - cellY);
  const double upper = cornerNoise(i, j, seed) * (1 - u) + cornerNoise(i + 1, j, seed) * u;
  const double lower = cornerNoise(i, j + 1, seed) * (1 - u) + cornerNoise(i + 1, j + 1, seed) * u;
  return upper * (1 - w) + lower * w;
}
