#include "pictures/texture_picture.h"

#include "entry/session_record.h"
#include "pictures/picture_surface.h"
#include "pictures/sources/bitmap_file.h"

static void repeatOverSample(PictureSurface* surface, int32_t width, int32_t height) {
  for (int32_t y = height; y < kTextureSampleSide; y += height) {
    copyFirstBlock(surface, width, height, 0, y);
  }
  for (int32_t x = width; x < kTextureSampleSide; x += width) {
    copyFirstBlock(surface, width, kTextureSampleSide, x, 0);
  }
}

int32_t loadTexturePicture(SessionRecord* session, const char* path) {
  EffectSettings* settings = settingsOf(session);
  PictureSurface* surface = settings->texturePicture;
  if (surface == nullptr) return kBitmapFailed;
  settings->textureWidth = kTextureSampleSide;
  settings->textureHeight = kTextureSampleSide;
  const int32_t code = loadBitmapFile(path, surface, &settings->textureWidth,
                                      &settings->textureHeight, /*keepSize=*/true);
  if (settings->textureWidth < kTextureSampleSide || settings->textureHeight < kTextureSampleSide) {
    repeatOverSample(surface, settings->textureWidth, settings->textureHeight);
  }
  settings->textureReady = 1;
  return code;
}
