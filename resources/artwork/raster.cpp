#include "resources/artwork/raster.h"

#include <algorithm>
#include <cmath>

constexpr int32_t kSamples = 8;  // along each axis of a pixel, where it is drawn at its own size

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

void fillBox(Picture* picture, const Box& box, Rgb colour) {
  for (int32_t y = box.top; y < box.bottom; ++y) {
    for (int32_t x = box.left; x < box.right; ++x) setPixel(picture, x, y, colour);
  }
}

void horizontalLine(Picture* picture, int32_t left, int32_t right, int32_t y, Rgb colour) {
  fillBox(picture, {left, y, right, y + 1}, colour);
}

void verticalLine(Picture* picture, int32_t x, int32_t top, int32_t bottom, Rgb colour) {
  fillBox(picture, {x, top, x + 1, bottom}, colour);
}

void frameBox(Picture* picture, const Box& box, Rgb topLeft, Rgb bottomRight) {
  horizontalLine(picture, box.left, box.right, box.bottom - 1, bottomRight);
  verticalLine(picture, box.right - 1, box.top, box.bottom, bottomRight);
  horizontalLine(picture, box.left, box.right - 1, box.top, topLeft);
  verticalLine(picture, box.left, box.top, box.bottom - 1, topLeft);
}

// --- Shapes and paints ----------------------------------------------------------------------

static double sampleAt(int32_t pixel, int32_t sample, int32_t samples) {
  return pixel + (sample + 0.5) / samples;
}

static double coveredPart(const Shape& shape, int32_t x, int32_t y, int32_t samples) {
  int32_t inside = 0;
  for (int32_t j = 0; j < samples; ++j) {
    const double sampleY = sampleAt(y, j, samples);
    for (int32_t i = 0; i < samples; ++i) {
      if (shape(sampleAt(x, i, samples), sampleY)) ++inside;
    }
  }
  return static_cast<double>(inside) / (samples * samples);
}

void fillShape(Picture* picture, const Shape& shape, const Paint& paint) {
  for (int32_t y = 0; y < picture->height; ++y) {
    for (int32_t x = 0; x < picture->width; ++x) {
      const double covered = coveredPart(shape, x, y, kSamples);
      if (covered > 0) blendPixel(picture, x, y, paint(x + 0.5, y + 0.5), covered);
    }
  }
}

void fillShape(Picture* picture, const Shape& shape, Rgb colour) {
  fillShape(picture, shape, [colour](double, double) { return colour; });
}

void fillPaint(Picture* picture, const Box& box, const Paint& paint) {
  for (int32_t y = box.top; y < box.bottom; ++y) {
    for (int32_t x = box.left; x < box.right; ++x) {
      Rgb sum = {0, 0, 0};
      for (int32_t j = 0; j < kSamples; ++j) {
        for (int32_t i = 0; i < kSamples; ++i) {
          const Rgb colour = paint(sampleAt(x, i, kSamples), sampleAt(y, j, kSamples));
          sum = {sum.red + colour.red, sum.green + colour.green, sum.blue + colour.blue};
        }
      }
      constexpr double kCount = kSamples * kSamples;
      setPixel(picture, x, y, {sum.red / kCount, sum.green / kCount, sum.blue / kCount});
    }
  }
}

std::vector<uint8_t> coverageOf(const Shape& shape, int32_t width, int32_t height,
                                int32_t samples) {
  std::vector<uint8_t> coverage;
  coverage.reserve(static_cast<size_t>(width) * height);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      coverage.push_back(rounded(255 * coveredPart(shape, x, y, samples)));
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
  Picture piece = newPicture(box.right - box.left, box.bottom - box.top, {0, 0, 0});
  for (int32_t y = 0; y < piece.height; ++y) {
    for (int32_t x = 0; x < piece.width; ++x) {
      setPixel(&piece, x, y, pixelAt(picture, box.left + x, box.top + y));
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
