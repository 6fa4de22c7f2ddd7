#include "pictures/run_pictures.h"

#include "entry/session_record.h"
#include "persistence/remembered_paths.h"
#include "pictures/environment_picture.h"
#include "pictures/picture_surface.h"
#include "pictures/rip_map.h"
#include "pictures/sources/builtin_pictures.h"

void createBuiltInEnvironment(SessionRecord* session) {
  PictureSurface* surface = newPictureSurface(kEnvironmentSurfaceSide, kEnvironmentSurfaceSide);
  session->pictures.environment = surface;
  settingsOf(session)->environmentPicture = surface;
  if (surface != nullptr) {
    drawBuiltInEnvironment(surface);
    buildEnvironmentRipMap(session);
  }
  restoreEnvironmentPath(session);
}

void createBuiltInTexture(SessionRecord* session) {
  PictureSurface* surface = newPictureSurface(kTextureSide, kTextureSide);
  session->pictures.texture = surface;
  settingsOf(session)->texturePicture = surface;
  if (surface == nullptr) return;
  drawBuiltInTexture(surface);
  restoreTexturePath(session);
}
