#include "persistence/picture_folder.h"

#include <cstdio>
#include <cstring>

#include "entry/session_record.h"
#include "persistence/path_parts.h"
#include "persistence/remembered_paths.h"
#include "persistence/settings_items.h"
#include "pictures/bitmap_file.h"
#include "pictures/environment_picture.h"
#include "pictures/texture_picture.h"
#include "platform/user_files.h"
#include "services/alerts.h"
#include "services/choosers.h"

constexpr char kFolderName[] = "environments and textures";
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
static bool pathInFolder(const EffectSettings* settings, const char* name, char* path) {
  const int length = std::snprintf(path, kPathBytes, "%s%s", settings->pictureFolder, name);
  if (length >= kPathBytes) return false;
  takeFileAsWritten(path, kPathBytes);
  return true;
}

static bool loadPicture(SessionRecord* session, int32_t kind, const char* path) {
  const int32_t code = kind == kEnvironmentName ? loadEnvironmentPicture(session, path)
                                                : loadTexturePicture(session, path);
  return code == kBitmapLoaded;
}

bool loadNamedPicture(SessionRecord* session, int32_t kind, char* name) {
  EffectSettings* settings = settingsOf(session);
  normalisePictureName(name);
  char localName[kPathBytes];
  pathFromWindowsName(name, localName, kPathBytes);
  for (;;) {
    char path[kPathBytes];
    if (pathInFolder(settings, localName, path) && loadPicture(session, kind, path)) {
      char* field = kind == kEnvironmentName ? settings->environmentPath : settings->texturePath;
      std::memcpy(field, path, kPathBytes);
      return true;
    }
    setAlertParameters(kind == kEnvironmentName ? "environment" : "texture", localName, "", "");
    if (showAlert(kFileNotFoundAlert) != kFindFolder) return false;
    findPictureFolder(session);
  }
}
