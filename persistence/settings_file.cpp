#include "persistence/settings_file.h"

#include <cstdint>
#include <cstdio>

#include "entry/handles.h"
#include "entry/session_record.h"
#include "persistence/path_parts.h"
#include "persistence/picture_folder.h"
#include "persistence/remembered_paths.h"
#include "persistence/settings_codec.h"
#include "pictures/environment_picture.h"
#include "pictures/texture_preparation.h"
#include "platform/user_files.h"
#include "services/alerts.h"
#include "services/choosers.h"
#include "services/memory_blocks.h"
#include "settings/setting_fields.h"

bool writeSettingsFile(const EffectSettings* settings, const char* path) {
  uint8_t bytes[kLongestEncodedSettings];
  const size_t count = encodeSettings(settings, bytes);
  return overwriteUserFile(path, bytes, count);
}

// What the settings file says, in the settings; false when there is no file to read.
static bool readInto(EffectSettings* settings, const char* path, DecodedSettings* decoded) {
  std::FILE* file = openUserFile(path);
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

static void loadNamedPictures(SessionRecord* session, DecodedSettings* decoded, const char* path) {
  const bool loaded =
      loadNamedPicture(session, kEnvironmentName, decoded->names[kEnvironmentName], path);
  if (settingsOf(session)->textureChoice == kTextureChoiceFile) {
    loadNamedPicture(session, kTextureName, decoded->names[kTextureName], path);
  }
  if (loaded) applyEnvironmentTurns(session);
}

void readSettingsFile(SessionRecord* session, const char* path, bool loadPictures) {
  // Also when there is no file: a folder learnt by another process counts from here on.
  readPictureFolder(session);
  DecodedSettings decoded;
  if (!readInto(settingsOf(session), path, &decoded) || decoded.outOfMemory) return;
  readPictureFolder(session);
  if (loadPictures && decoded.complete && decoded.hasNames)
    loadNamedPictures(session, &decoded, path);
  prepareTexture(session);
}

bool savePreset(const EffectSettings* settings) {
  char path[kPathBytes];
  if (!chooseFileToSave(path, kPresetFiles, "Save a settings file")) return false;
  if (writeSettingsFile(settings, path)) return true;
  showFileAlert(kCannotSaveString, fileNameOf(path));
  return false;
}

// The string that tells what is wrong with a file, 0 when it can be taken.
static int32_t problemOf(SettingsCheck check) {
  switch (check) {
    case SettingsCheck::notSettings:
      return kNotSettingsString;
    case SettingsCheck::damaged:
      return kDamagedSettingsString;
    default:
      return 0;
  }
}

// A block that the file has replaces the old one; without one the old one stays.
static void takeBlock(Handle* field, Handle old) {
  if (*field == nullptr) {
    *field = old;
  } else {
    disposeModuleHandle(old);
  }
}

static void takeLoaded(EffectSettings* settings, EffectSettings loaded) {
  takeBlock(&loaded.environmentRef, settings->environmentRef);
  takeBlock(&loaded.textureRef, settings->textureRef);
  *settings = loaded;
}

bool openPreset(SessionRecord* session) {
  char path[kPathBytes];
  if (!chooseFileToOpen(path, kPresetFiles, "Open a settings file")) return false;
  EffectSettings loaded = *settingsOf(session);
  loaded.environmentRef = nullptr;
  loaded.textureRef = nullptr;
  DecodedSettings decoded = {};
  const bool read = readInto(&loaded, path, &decoded) && !decoded.outOfMemory;
  const SettingsCheck check = checkSettings(loaded, decoded);
  const int32_t problem = read ? problemOf(check) : kCannotOpenString;
  if (problem != 0) {
    disposeModuleHandle(loaded.environmentRef);
    disposeModuleHandle(loaded.textureRef);
    showFileAlert(problem, fileNameOf(path));
    return false;
  }
  if (check == SettingsCheck::outOfRange) limitSettings(&loaded);
  takeLoaded(settingsOf(session), loaded);
  learnPictureFolder(session, path);
  readPictureFolder(session);
  if (decoded.hasNames) loadNamedPictures(session, &decoded, path);
  prepareTexture(session);
  if (check == SettingsCheck::outOfRange) {
    showFileAlert(kLimitedSettingsString, fileNameOf(path));
  }
  return true;
}

void saveCachedSettings(SessionRecord* session) {
  char path[kPathBytes];
  if (cachedSettingsPath(/*forWriting=*/true, path, kPathBytes))
    writeSettingsFile(settingsOf(session), path);
}

void loadCachedSettings(SessionRecord* session) {
  char path[kPathBytes];
  if (cachedSettingsPath(/*forWriting=*/false, path, kPathBytes)) {
    readSettingsFile(session, path, /*loadPictures=*/false);
  } else {
    readPictureFolder(session);
  }
}
