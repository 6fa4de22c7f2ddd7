#include "pictures/sources/picture_tables.h"

#include "entry/session_record.h"
#include "pictures/environment_picture.h"
#include "pictures/picture_surface.h"

static void copyEnvironment(const PictureSurface* surface, uint8_t* table) {
  for (int32_t y = 0; y < kEnvironmentSurfaceSide; ++y) {
    for (int32_t x = 0; x < kEnvironmentSurfaceSide; ++x) {
      const uint8_t* pixel = surfacePixel(surface, x, y);
      *table++ = 0;
      *table++ = pixel[0];
      *table++ = pixel[1];
      *table++ = pixel[2];
    }
  }
}

static void copyTexture(const PictureSurface* surface, uint8_t* table) {
  for (int32_t y = 0; y < kTextureSide; ++y) {
    for (int32_t x = 0; x < kTextureSide; ++x) {
      *table++ = static_cast<uint8_t>(255 - surfacePixel(surface, x, y)[1]);
    }
  }
}

void copyPicturesToTables(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  auto* environmentTable = static_cast<uint8_t*>(session->render.environmentTable.address);
  if (settings->environmentPicture != nullptr && environmentTable != nullptr &&
      settings->environmentReady != 0) {
    copyEnvironment(settings->environmentPicture, environmentTable);
  }
  auto* textureTable = static_cast<uint8_t*>(session->render.textureTable.address);
  if (settings->texturePicture != nullptr && textureTable != nullptr &&
      settings->textureReady != 0) {
    copyTexture(settings->texturePicture, textureTable);
  }
}
