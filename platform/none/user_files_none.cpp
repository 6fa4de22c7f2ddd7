#include "platform/user_files.h"

#include <cstdio>

#include "platform/none/none_state.h"

char pathSeparator() {
  return noneState().script.separator;
}

// This back end's paths are in the Windows character set themselves.
void pathFromWindowsName(const char* name, char* path, int32_t bytes) {
  std::snprintf(path, static_cast<size_t>(bytes), "%s", name);
}

void windowsNameFromPath(const char* path, char* name, int32_t bytes) {
  std::snprintf(name, static_cast<size_t>(bytes), "%s", path);
}

// As on systems that take capitals and small letters for the same.
void takeFileAsWritten(char*, int32_t) {
}

bool cachedSettingsPath(bool, char* path, int32_t bytes) {
  const std::string& scripted = noneState().script.cachedSettingsPath;
  std::snprintf(path, static_cast<size_t>(bytes), "%s", scripted.c_str());
  return !scripted.empty();
}

std::FILE* openUserFile(const char* path) {
  return std::fopen(path, "rb");
}

bool overwriteUserFile(const char* path, const uint8_t* bytes, size_t count) {
  std::FILE* file = std::fopen(path, "r+b");
  // Only what is not there is made: opening may also have failed for another reason.
  const bool isNew = file == nullptr;
  if (isNew) file = std::fopen(path, "wbx");
  if (file == nullptr) return false;
  bool written = std::fwrite(bytes, 1, count, file) == count;
  written = std::fclose(file) == 0 && written;
  if (!written && isNew) std::remove(path);
  return written;
}

bool ownPicturesFolder(char* folder, int32_t bytes) {
  const std::string& scripted = noneState().script.ownPictures;
  std::snprintf(folder, static_cast<size_t>(bytes), "%s", scripted.c_str());
  return !scripted.empty();
}
