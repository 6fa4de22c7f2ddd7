#include "persistence/remembered_paths.h"

#include "entry/session_record.h"
#include "pictures/environment_picture.h"
#include "pictures/texture_picture.h"
#include "pictures/texture_preparation.h"
#include "platform/remembered_values.h"

constexpr char kPictureFolderValue[] = "EnviroPath";
constexpr char kEnvironmentValue[] = "ChromeFile";
constexpr char kTextureValue[] = "TextureFile";

void readPictureFolder(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  settings->pictureFolder[0] = 0;
  readRememberedValue(kPictureFolderValue, settings->pictureFolder, kPathBytes);
}

void storePictureFolder(SessionRecord* session) {
  writeRememberedValue(kPictureFolderValue, settingsOf(session)->pictureFolder);
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
  writeRememberedValue(kEnvironmentValue, settingsOf(session)->environmentPath);
}

void storeTexturePath(SessionRecord* session) {
  writeRememberedValue(kTextureValue, settingsOf(session)->texturePath);
}
