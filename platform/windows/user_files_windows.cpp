#include "platform/user_files.h"

#include <cstdio>

constexpr char kCachedSettings[] = "c:\\Windows\\Temp\\Morvalis cached settings";

char pathSeparator() {
  return '\\';
}

// Paths are in the system's own character set already.
void pathFromWindowsName(const char* name, char* path, int32_t bytes) {
  std::snprintf(path, static_cast<size_t>(bytes), "%s", name);
}

void windowsNameFromPath(const char* path, char* name, int32_t bytes) {
  std::snprintf(name, static_cast<size_t>(bytes), "%s", path);
}

// The system takes capitals and small letters for the same.
void takeFileAsWritten(char*, int32_t) {
}

bool cachedSettingsPath(bool, char* path, int32_t bytes) {
  std::snprintf(path, static_cast<size_t>(bytes), "%s", kCachedSettings);
  return true;
}
