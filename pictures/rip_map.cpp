#include "pictures/rip_map.h"

#include "entry/session_record.h"
#include "pictures/environment_picture.h"
#include "pictures/picture_surface.h"

static void averagePixels(PictureSurface* surface, int32_t x, int32_t y, const uint8_t* a,
                          const uint8_t* b) {
  uint8_t* pixel = surfacePixel(surface, x, y);
  for (int32_t channel = 0; channel < kSurfaceBytesPerPixel; ++channel) {
    pixel[channel] = static_cast<uint8_t>((a[channel] + b[channel]) >> 1);
  }
}

static void halveAcross(PictureSurface* surface) {
  int32_t source = 0;
  for (int32_t width = kEnvironmentSide / 2; width >= 1; width /= 2) {
    const int32_t destination = source + 2 * width;
    for (int32_t y = 0; y < kEnvironmentSide; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        averagePixels(surface, destination + x, y, surfacePixel(surface, source + 2 * x, y),
                      surfacePixel(surface, source + 2 * x + 1, y));
      }
    }
    source = destination;
  }
}

static void halveDown(PictureSurface* surface) {
  int32_t source = 0;
  for (int32_t height = kEnvironmentSide / 2; height >= 1; height /= 2) {
    const int32_t destination = source + 2 * height;
    for (int32_t y = 0; y < height; ++y) {
      for (int32_t x = 0; x < kEnvironmentSurfaceSide; ++x) {
        averagePixels(surface, x, destination + y, surfacePixel(surface, x, source + 2 * y),
                      surfacePixel(surface, x, source + 2 * y + 1));
      }
    }
    source = destination;
  }
}

void buildEnvironmentRipMap(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (settings->environmentPicture == nullptr) return;
  settings->environmentReady = 1;
  halveAcross(settings->environmentPicture);
  halveDown(settings->environmentPicture);
}
