#include "persistence/remembered_paths.h"

#include "entry/session_record.h"
#include "pictures/environment_picture.h"
#include "pictures/texture_picture.h"
#include "pictures/texture_preparation.h"
#include "platform/remembered_values.h"

static_assert(kRememberedBytes == kPathBytes);

constexpr char kPictureFolderValue[] = "EnviroPath";
constexpr char kEnvironmentValue[] = "ChromeFile";
constexpr char kTextureValue[] = "TextureFile";

void readPictureFolder(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  settings->pictureFolder[0] = 0;
  readRememberedValue(kPictureFolderValue, settings->pictureFolder, kPathBytes);
}

void storePictureFolder(SessionRecord* session) {
  writeRememberedField(kPictureFolderValue, settingsOf(session)->pictureFolder, /*atOnce=*/true);
}

void restoreEnvironmentPath(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (!readRememberedValue(kEnvironmentValue, settings->environmentPath, kPathBytes)) return;
  loadEnvironmentPicture(session, settings->environmentPath);
  // A failed load leaves the built-in picture, and that is turned too.
  applyEnvironmentTurns(session);
}

void restoreTexturePath(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (settings->textureChoice != kTextureChoiceFile) {
    prepareTexture(session);
  } else if (readRememberedValue(kTextureValue, settings->texturePath, kPathBytes)) {
    loadTexturePicture(session, settings->texturePath);
  }
}

void storeEnvironmentPath(SessionRecord* session) {
  writeRememberedField(kEnvironmentValue, settingsOf(session)->environmentPath, /*atOnce=*/false);
}

void storeTexturePath(SessionRecord* session) {
  writeRememberedField(kTextureValue, settingsOf(session)->texturePath, /*atOnce=*/false);
}
