#include "platform/user_files.h"

#include <cstdio>
#include <cstring>

#include "platform/windows/windows_api.h"

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

// Beside the module, as the package has it.
bool ownPicturesFolder(char* folder, int32_t bytes) {
  char module[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameA(moduleInstance(), module, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  char* name = std::strrchr(module, '\\');
  if (name == nullptr) return false;
  name[1] = 0;
  return std::snprintf(folder, static_cast<size_t>(bytes), "%senvironments and textures\\",
                       module) < bytes;
}
