#include "tests/reference/reference_profile_relief.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kDegrees = 57.295779524;
constexpr double kPi = 3.14159265359;
constexpr int32_t kLast = 3000;
constexpr int32_t kHalf = 1500;

using Heights = std::array<int32_t, kLast + 1>;

int32_t thousandth(int32_t i) {
  return i * 1000 / 3000;
}

void smoothKink(Heights& p, int32_t c) {
  const int32_t low = std::max(c - 10, 1);
  const int32_t high = std::min(c + 10, 2999);
  for (int32_t repetition = 0; repetition < 7; ++repetition) {
    for (int32_t i = low; i <= high; ++i) p[i] = (p[i - 1] + p[i + 1]) / 2;
    for (int32_t i = high; i >= low; --i) p[i] = (p[i - 1] + p[i + 1]) / 2;
  }
}

void fillDoubleRidgeHalf(Heights& p) {
  for (int32_t i = 0; i <= 750; ++i) p[i] = 10000 - 10 * thousandth(i);
  for (int32_t i = 750; i <= kHalf; ++i) p[i] = 10000 - (500 - thousandth(i)) * 10;
}

void fillDomeHalf(Heights& p) {
  for (int32_t i = 0; i <= kHalf; ++i) {
    const int32_t t = thousandth(i);
    p[i] = static_cast<int32_t>(10000 - 2500 * std::sin(t * 179.9 / 500 / kDegrees));
  }
}

Heights unscaledProfile(int32_t shape) {
  Heights p{};
  switch (shape) {
    case 1:
      for (int32_t i = 0; i <= kLast; ++i) p[i] = 10 * thousandth(i);
      break;
    case 2:
      for (int32_t i = 0; i <= kHalf; ++i) p[i] = 10000 - 10 * thousandth(i);
      for (int32_t i = kHalf; i <= kLast; ++i) p[i] = 10000 - 10 * (1000 - thousandth(i));
      smoothKink(p, 1500);
      break;
    case 3:
      for (int32_t i = 0; i <= kLast; ++i) {
        p[i] = static_cast<int32_t>(5000 - 4999.9 * std::sin(i * kPi / 3000));
      }
      break;
    case 4:
      for (int32_t i = 0; i <= kLast; ++i) {
        p[kLast - i] = static_cast<int32_t>(10000 - 9999.5 * std::sin(i * 89.99 / 3000 / kDegrees));
      }
      break;
    case 5:
      for (int32_t i = 0; i <= kLast; ++i) {
        p[i] = static_cast<int32_t>(9999.5 * std::sin(i * 89.99 / 3000 / kDegrees));
      }
      break;
    case 6:
      for (int32_t i = 0; i <= 1000; ++i) p[i] = 10 * thousandth(i);
      for (int32_t i = 1000; i <= 2000; ++i) p[i] = 3330;
      for (int32_t i = 2000; i <= kLast; ++i) p[i] = (thousandth(i) - 333) * 10;
      smoothKink(p, 1000);
      smoothKink(p, 2000);
      break;
    case 7:
      fillDoubleRidgeHalf(p);
      for (int32_t i = kHalf; i <= kLast; ++i) p[i] = 10000 - (thousandth(i) - 500) * 10;
      smoothKink(p, 750);
      smoothKink(p, 1500);
      break;
    case 8:
      fillDomeHalf(p);
      for (int32_t i = 0; i <= kHalf; ++i) {
        const int32_t t = thousandth(i);
        p[kHalf + i] = static_cast<int32_t>(10000 - 5000 * std::sin(t * 89.9 / 500 / kDegrees));
      }
      for (int32_t time = 0; time < 3; ++time) smoothKink(p, 1500);
      break;
    case 9:
      for (int32_t i = 0; i <= kHalf; ++i) p[i] = 10000 - 10 * thousandth(i);
      for (int32_t i = 0; i <= kHalf; ++i) {
        const int32_t t = thousandth(i);
        p[kHalf + i] =
            static_cast<int32_t>(10000 - (5000 - 5000 * std::sin(t * 89.9 / 500 / kDegrees)));
      }
      smoothKink(p, 500);
      break;
    case 10:
      fillDoubleRidgeHalf(p);
      for (int32_t i = 0; i <= kHalf; ++i) p[kHalf + i] = p[i];
      smoothKink(p, 750);
      smoothKink(p, 1500);
      smoothKink(p, 2250);
      break;
    case 11:
      fillDomeHalf(p);
      for (int32_t i = 0; i <= kHalf; ++i) p[kHalf + i] = p[i];
      for (int32_t time = 0; time < 3; ++time) smoothKink(p, 1500);
      break;
    case 12:
      for (int32_t i = 0; i <= kLast; ++i) {
        const float s = static_cast<float>(std::sin(i * 359.9 / 3000 / kDegrees));
        p[i] = static_cast<int32_t>(5000 - 2500.0 * s * s * s);
      }
      break;
    case 13:
      for (int32_t i = 0; i <= kLast; ++i) {
        p[i] = static_cast<int32_t>(5000 - 2500 * std::sin(i * 359.9 / 3000 / kDegrees));
      }
      break;
    default:
      break;
  }
  return p;
}

bool isReversed(int32_t shape) {
  return shape == 2 || shape == 3 || shape == 7 || shape == 8 || shape == 9 || shape == 12 ||
         shape == 13;
}

// Cubic interpolation between p1 and p2 at f / 128; the result is 64 times the samples.
int64_t interpolated(int64_t p0, int64_t p1, int64_t p2, int64_t p3, int64_t f) {
  const int64_t g = (f * f) >> 7;
  return ((128 - f) * (p0 * (g - f) - 2 * p1 * (g - 128) + p2 * (g + f)) +
          f * (p3 * (g - f) + p1 * (g - 3 * f + 256) - 2 * p2 * (g - 2 * f))) /
         512;
}

}  // namespace

ReferenceProfile referenceProfile(const EffectSettings& settings) {
  Heights p = unscaledProfile(settings.shape);
  if (isReversed(settings.shape)) {
    for (int32_t i = 0; i < kHalf; ++i) std::swap(p[i], p[kLast - i]);
  }
  int32_t depthLow = 30000;
  for (int32_t i = 0; i <= kLast; ++i) depthLow = std::min(depthLow, -p[i]);

  const int32_t k = referenceEffectiveRadius(settings) * settings.height;
  ReferenceProfile profile{};
  for (int32_t i = 0; i <= kLast; ++i) profile.heights[i] = static_cast<int16_t>(p[i] * k / 5000);
  profile.depthLow = depthLow * k / 5000;
  return profile;
}

void referenceMapProfile(ReferenceField& field, const ReferenceProfile& profile) {
  // The last row keeps its closeness to the edge.
  for (int32_t j = 0; j < field.rows - 1; ++j) {
    for (int32_t i = 0; i < field.columns; ++i) {
      int16_t& cell = referenceCell(field, i, j);
      cell = profile.heights[cell];
    }
  }
}

int32_t referenceTextureScaleFactor(const EffectSettings& settings) {
  return static_cast<int32_t>(100 * std::pow(2.0, 4 - 7.0 * settings.textureScale / 100));
}

void referenceRelief(ReferenceField& field, const EffectSettings& settings,
                     const std::vector<uint8_t>& table, int32_t textureWidth,
                     int32_t textureHeight) {
  if (settings.textureChoice == kTextureChoiceNone) return;
  const int64_t width = std::max(textureWidth, 1);
  const int64_t height = std::max(textureHeight, 1);
  const int64_t s = referenceTextureScaleFactor(settings);
  const int64_t k = settings.texture * int64_t{-48} / s;
  const int64_t previewScale = settings.previewScale;
  const bool preview = settings.previewMode == 1;
  const int64_t originX = preview ? settings.previewOriginX * int64_t{128} * s / 100 : 0;
  const int64_t originY = preview ? settings.previewOriginY * int64_t{128} * s / 100 : 0;

  for (int32_t j = 0; j < field.rows - 1; ++j) {
    const int64_t v = settings.textureOffsetY * int64_t{128} + originY +
                      j * int64_t{128} * previewScale * s / 100;
    const int64_t fy = v & 127;
    for (int32_t x = 0; x < field.columns - 1; ++x) {
      const int64_t u = settings.textureOffsetX * int64_t{128} + originX +
                        x * int64_t{128} * previewScale * s / 100;
      const int64_t step = previewScale * 128 * s;
      const int64_t fx = (originX + x * step / 100) & 127;

      // A negative offset leaves negative remainders; texels are then taken by the low 8 bits.
      int64_t column[4] = {(u >> 7) % width};
      int64_t row[4] = {(v >> 7) % height};
      for (int32_t n = 1; n < 4; ++n) {
        column[n] = (column[0] + n) % width;
        row[n] = (row[0] + n) % height;
      }
      int64_t h[4];
      for (int32_t n = 0; n < 4; ++n) {
        const uint8_t* texels = &table[(row[n] & 255) * 256];
        h[n] = interpolated(texels[column[0] & 255], texels[column[1] & 255],
                            texels[column[2] & 255], texels[column[3] & 255], fx);
      }
      const int64_t a = interpolated(h[0], h[1], h[2], h[3], fy);
      int16_t& cell = referenceCell(field, x, j);
      const int64_t value = cell - 2 * (a * k / (previewScale * 16 * 4096));
      cell = static_cast<int16_t>(std::clamp<int64_t>(value, INT16_MIN, INT16_MAX));
    }
  }
}
