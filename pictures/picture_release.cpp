#include "pictures/picture_release.h"

#include "entry/session_record.h"
#include "pictures/picture_surface.h"

void releasePictures(SessionRecord* session) {
  disposePictureSurface(session->pictures.environment);
  disposePictureSurface(session->pictures.texture);
  session->pictures = {};
  EffectSettings* settings = settingsOf(session);
  if (settings == nullptr) return;
  settings->environmentPicture = nullptr;
  settings->texturePicture = nullptr;
}
