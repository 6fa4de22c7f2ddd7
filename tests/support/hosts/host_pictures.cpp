#include "tests/support/hosts/host_pictures.h"

#include <algorithm>
#include <cmath>

HostPicture testPicture(int32_t width, int32_t height, int32_t planes) {
  HostPicture picture = {width, height, planes, {}};
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      for (int32_t plane = 0; plane < planes; ++plane) {
        picture.samples.push_back(static_cast<uint8_t>(x * 7 + y * (3 + plane) + plane * 61));
      }
    }
  }
  return picture;
}

HostMask testMask(int32_t width, int32_t height) {
  HostMask mask;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const double disc = height / 3.0 - std::hypot(x - width / 3.0, y - height / 2.0);
      const double bar = width / 12.0 - std::abs(x - width * 0.8);
      const double inside = std::max(disc, bar);
      mask.push_back(static_cast<uint8_t>(std::clamp((inside + 0.5) * 255, 0.0, 255.0)));
    }
  }
  return mask;
}

EffectSettings* hostSettings() {
  return static_cast<EffectSettings*>(*hostRecord()->parameters);
}

void showEverything(EffectSettings* settings) {
  settings->reflection = 40;
  settings->glassiness = 45;
  settings->caustic = 70;
  settings->tarnish = 60;
  settings->iriColors = 35;
  settings->iridescence = 80;
  settings->light2Color = {60000, 30000, 9000};
}
