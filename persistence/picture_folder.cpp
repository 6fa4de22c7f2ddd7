#include "persistence/picture_folder.h"

#include <cstdio>
#include <cstring>

#include "entry/session_record.h"
#include "persistence/path_parts.h"
#include "persistence/remembered_paths.h"
#include "persistence/settings_items.h"
#include "pictures/environment_picture.h"
#include "pictures/sources/bitmap_file.h"
#include "pictures/texture_picture.h"
#include "platform/user_files.h"
#include "services/alerts.h"
#include "services/choosers.h"

constexpr char kFolderName[] = "environments and textures";
constexpr int32_t kLevelsAround = 3;  // a settings file's folder and those above it
constexpr char kFindFolderTitle[] = "Choose any file in the 'environments and textures' directory";

static void setFolder(SessionRecord* session, const char* path, size_t length) {
  EffectSettings* settings = settingsOf(session);
  std::snprintf(settings->pictureFolder, kPathBytes, "%.*s", static_cast<int>(length), path);
  storePictureFolder(session);
}

void learnPictureFolder(SessionRecord* session, const char* path) {
  if (path == nullptr || settingsOf(session)->pictureFolder[0] != 0) return;
  char marker[sizeof(kFolderName) + 1];
  const int length = std::snprintf(marker, sizeof(marker), "%s%c", kFolderName, pathSeparator());
  const char* found = std::strstr(path, marker);
  if (found != nullptr) setFolder(session, path, static_cast<size_t>(found - path + length));
}

void findPictureFolder(SessionRecord* session) {
  char path[kPathBytes];
  if (!chooseFileToOpen(path, kPictureFiles, kFindFolderTitle)) return;
  const char* separator = std::strrchr(path, pathSeparator());
  const size_t length = separator == nullptr ? std::strlen(path) : separator + 1 - path;
  setFolder(session, path, length);
}

// True when folder and name fit a path.
static bool pathInFolder(const char* folder, const char* name, char* path) {
  const int length = std::snprintf(path, kPathBytes, "%s%s", folder, name);
  if (length >= kPathBytes) return false;
  takeFileAsWritten(path, kPathBytes);
  return true;
}

static bool loadPicture(SessionRecord* session, int32_t kind, const char* path) {
  const int32_t code = kind == kEnvironmentName ? loadEnvironmentPicture(session, path)
                                                : loadTexturePicture(session, path);
  return code == kBitmapLoaded;
}

static bool loadFrom(SessionRecord* session, int32_t kind, const char* folder, const char* name) {
  EffectSettings* settings = settingsOf(session);
  char path[kPathBytes];
  if (!pathInFolder(folder, name, path) || !loadPicture(session, kind, path)) return false;
  char* field = kind == kEnvironmentName ? settings->environmentPath : settings->texturePath;
  std::memcpy(field, path, kPathBytes);
  return true;
}

// Cuts a path behind the separator before its last part; false when there is none.
static bool goUp(char* path) {
  size_t length = std::strlen(path);
  if (length > 0 && path[length - 1] == pathSeparator()) --length;
  while (length > 0 && path[length - 1] != pathSeparator()) --length;
  path[length] = 0;
  return length > 0;
}

// In the file's own folder, in the usual one beside it and above it, and in the one that it lies
// in.
static bool loadFromAround(SessionRecord* session, int32_t kind, const char* file,
                           const char* name) {
  char folder[kPathBytes];
  std::snprintf(folder, sizeof(folder), "%s", file);
  if (!goUp(folder)) return false;
  if (loadFrom(session, kind, folder, name)) return true;
  bool more = true;
  for (int32_t i = 0; i < kLevelsAround && more; ++i, more = goUp(folder)) {
    char usual[kPathBytes];
    const int length =
        std::snprintf(usual, sizeof(usual), "%s%s%c", folder, kFolderName, pathSeparator());
    if (length < kPathBytes && loadFrom(session, kind, usual, name)) return true;
    const size_t end = std::strlen(folder);
    const size_t tail = std::strlen(kFolderName) + 1;
    const bool isUsual =
        end >= tail && std::strncmp(folder + end - tail, kFolderName, tail - 1) == 0;
    if (isUsual && loadFrom(session, kind, folder, name)) return true;
  }
  return false;
}

static bool loadFromOwn(SessionRecord* session, int32_t kind, const char* name) {
  char folder[kPathBytes];
  return ownPicturesFolder(folder, kPathBytes) && loadFrom(session, kind, folder, name);
}

bool loadNamedPicture(SessionRecord* session, int32_t kind, char* name, const char* settingsFile) {
  const char* known = settingsOf(session)->pictureFolder;
  if (name[0] == 0) return false;
  normalisePictureName(name);
  char localName[kPathBytes];
  pathFromWindowsName(name, localName, kPathBytes);
  if (loadFrom(session, kind, known, localName) ||
      loadFromAround(session, kind, settingsFile, localName) ||
      loadFromOwn(session, kind, localName)) {
    return true;
  }
  for (;;) {
    setAlertParameters(kind == kEnvironmentName ? "environment" : "texture", localName, "", "");
    if (showAlert(kFileNotFoundAlert) != kFindFolder) return false;
    findPictureFolder(session);
    if (loadFrom(session, kind, known, localName)) return true;
  }
}
