#include "persistence/settings_file.h"

#include <cstdint>
#include <cstdio>

#include "entry/session_record.h"
#include "persistence/picture_folder.h"
#include "persistence/remembered_paths.h"
#include "persistence/settings_codec.h"
#include "pictures/environment_picture.h"
#include "pictures/texture_preparation.h"
#include "platform/user_files.h"
#include "services/choosers.h"
#include "services/memory_blocks.h"

bool writeSettingsFile(SessionRecord* session, const char* path) {
  uint8_t bytes[kLongestEncodedSettings];
  const size_t count = encodeSettings(settingsOf(session), bytes);
  return overwriteUserFile(path, bytes, count);
}

// What the settings file says, in the settings; false when there is no file to read.
static bool readInto(EffectSettings* settings, const char* path, DecodedSettings* decoded) {
  std::FILE* file = std::fopen(path, "rb");
  if (file == nullptr) return false;
  auto* bytes = static_cast<uint8_t*>(newModuleBlock(kLargestSettingsFile));
  const bool room = bytes != nullptr;
  if (room) {
    const size_t count = std::fread(bytes, 1, kLargestSettingsFile, file);
    decodeSettings(bytes, count, settings, decoded);
  }
  std::fclose(file);
  freeModuleBlock(bytes);
  return room;
}

static void loadNamedPictures(SessionRecord* session, DecodedSettings* decoded) {
  const bool loaded = loadNamedPicture(session, kEnvironmentName, decoded->names[kEnvironmentName]);
  if (settingsOf(session)->textureChoice == kTextureChoiceFile) {
    loadNamedPicture(session, kTextureName, decoded->names[kTextureName]);
  }
  if (loaded) applyEnvironmentTurns(session);
}

void readSettingsFile(SessionRecord* session, const char* path, bool loadPictures) {
  // Also when there is no file: a folder learnt by another process counts from here on.
  readPictureFolder(session);
  DecodedSettings decoded;
  if (!readInto(settingsOf(session), path, &decoded) || decoded.outOfMemory) return;
  readPictureFolder(session);
  if (loadPictures && decoded.complete && decoded.hasNames) loadNamedPictures(session, &decoded);
  prepareTexture(session);
}

bool savePreset(SessionRecord* session) {
  char path[kPathBytes];
  if (!chooseFileToSave(path, kPresetFiles, "Save a settings file")) return false;
  writeSettingsFile(session, path);
  return true;
}

bool openPreset(SessionRecord* session) {
  char path[kPathBytes];
  if (!chooseFileToOpen(path, kPresetFiles, "Open a settings file")) return false;
  learnPictureFolder(session, path);
  readSettingsFile(session, path, /*loadPictures=*/true);
  return true;
}

void saveCachedSettings(SessionRecord* session) {
  char path[kPathBytes];
  if (cachedSettingsPath(/*forWriting=*/true, path, kPathBytes)) writeSettingsFile(session, path);
}

void loadCachedSettings(SessionRecord* session) {
  char path[kPathBytes];
  if (cachedSettingsPath(/*forWriting=*/false, path, kPathBytes)) {
    readSettingsFile(session, path, /*loadPictures=*/false);
  } else {
    readPictureFolder(session);
  }
}
