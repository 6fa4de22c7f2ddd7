#include "pictures/sources/builtin_pictures.h"

#include <algorithm>

#include "pictures/picture_surface.h"

// The colours met on the way down the picture, for a metal to mirror: a light ceiling, the golden
// wall, the dark line where the wall meets the floor, and the floor rising out of the dark.
// `at` runs from 0 (top) to 256 (bottom).
struct ColourStop {
  int32_t at;
  int32_t red;
  int32_t green;
  int32_t blue;
};

constexpr ColourStop kStops[] = {{0, 255, 248, 222},  {36, 255, 236, 172}, {76, 252, 206, 98},
                                 {112, 246, 196, 86}, {140, 224, 160, 54}, {156, 128, 76, 16},
                                 {168, 46, 24, 6},    {182, 36, 18, 6},    {198, 96, 56, 16},
                                 {220, 164, 106, 38}, {240, 190, 130, 56}, {256, 160, 104, 42}};

// How far the horizon sinks from the left edge to the right one, in units of `at`.
constexpr int32_t kHorizonTilt = 20;

// The lamp at the top left: centre in pixels, and the square of the radius at which it fades out.
constexpr int32_t kLampX = 12;
constexpr int32_t kLampY = 9;
constexpr int32_t kLampReach = 30 * 30;

static int32_t between(int32_t from, int32_t to, int32_t part, int32_t whole) {
  return from + (to - from) * part / whole;
}

static void wallColour(int32_t at, int32_t* colour) {
  int32_t i = 0;
  while (kStops[i + 1].at < at) ++i;
  const ColourStop& a = kStops[i];
  const ColourStop& b = kStops[i + 1];
  const int32_t part = at - a.at;
  const int32_t whole = b.at - a.at;
  colour[0] = between(a.red, b.red, part, whole);
  colour[1] = between(a.green, b.green, part, whole);
  colour[2] = between(a.blue, b.blue, part, whole);
}

void drawBuiltInEnvironment(PictureSurface* surface) {
  for (int32_t y = 0; y < kBuiltInSide; ++y) {
    for (int32_t x = 0; x < kBuiltInSide; ++x) {
      const int32_t tilt = (kBuiltInSide / 2 - x) * kHorizonTilt / kBuiltInSide;
      int32_t colour[3];
      wallColour(std::clamp(y * 4 + tilt, 0, 256), colour);
      const int32_t dx = x - kLampX;
      const int32_t dy = y - kLampY;
      const int32_t near = std::max(0, kLampReach - dx * dx - dy * dy);
      const int32_t lamp = near * near / kLampReach;  // squared, for a soft edge
      uint8_t* pixel = surfacePixel(surface, x, y);
      for (int32_t channel = 0; channel < 3; ++channel) {
        pixel[channel] = static_cast<uint8_t>(between(colour[channel], 255, lamp, kLampReach));
      }
    }
  }
}

void drawBuiltInTexture(PictureSurface* surface) {
  for (int32_t y = 0; y < kBuiltInSide; ++y) {
    for (int32_t x = 0; x < kBuiltInSide; ++x) setGreyPixel(surface, x, y, kBuiltInTextureGrey);
  }
}
