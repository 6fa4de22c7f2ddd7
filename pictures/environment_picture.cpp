#include "pictures/environment_picture.h"

#include <algorithm>

#include "entry/session_record.h"
#include "pictures/picture_surface.h"
#include "pictures/rip_map.h"
#include "pictures/sources/bitmap_file.h"

int32_t loadEnvironmentPicture(SessionRecord* session, const char* path) {
  EffectSettings* settings = settingsOf(session);
  int32_t width = kEnvironmentSide;
  int32_t height = kEnvironmentSide;
  const int32_t code =
      loadBitmapFile(path, settings->environmentPicture, &width, &height, /*keepSize=*/false);
  buildEnvironmentRipMap(session);
  settings->environmentReady = 1;
  return code;
}

void applyEnvironmentTurns(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (settings->environmentPicture == nullptr) return;
  const int32_t turns = settings->environmentTurns;
  if (turns >= 1 && turns <= 3) {
    for (int32_t i = 0; i < turns; ++i) rotateEnvironmentQuarter(settings->environmentPicture);
  }
  settings->environmentReady = 1;
  buildEnvironmentRipMap(session);
}

static void movePixel(PictureSurface* surface, int32_t toX, int32_t toY, const uint8_t* from) {
  std::copy_n(from, kSurfaceBytesPerPixel, surfacePixel(surface, toX, toY));
}

void rotateEnvironmentQuarter(PictureSurface* surface) {
  constexpr int32_t last = kEnvironmentSide - 1;
  for (int32_t y = 0; y < kEnvironmentSide / 2; ++y) {
    for (int32_t x = 0; x < kEnvironmentSide / 2; ++x) {
      uint8_t kept[kSurfaceBytesPerPixel];
      std::copy_n(surfacePixel(surface, x, y), kSurfaceBytesPerPixel, kept);
      movePixel(surface, x, y, surfacePixel(surface, y, last - x));
      movePixel(surface, y, last - x, surfacePixel(surface, last - x, last - y));
      movePixel(surface, last - x, last - y, surfacePixel(surface, last - y, x));
      movePixel(surface, last - y, x, kept);
    }
  }
}
