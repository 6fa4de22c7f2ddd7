#include "platform/user_files.h"

#include <cstdio>

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

// Others may read meanwhile, as the standard library's files allow as well. Only what is not there
// is made: opening may also fail while another program has the file.
bool overwriteUserFile(const char* path, const uint8_t* bytes, size_t count) {
  HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool whole = WriteFile(file, bytes, static_cast<DWORD>(count), &written, nullptr) != 0 &&
                     written == count && FlushFileBuffers(file) != 0;
  return CloseHandle(file) != 0 && whole;
}
