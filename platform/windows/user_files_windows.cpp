#include "platform/user_files.h"

#include <cstdio>
#include <cstring>

#include "platform/windows/dialogs/narrow_path.h"
#include "platform/windows/windows_api.h"

constexpr char kMachinesFolder[] = "c:\\Windows\\Temp\\";
constexpr char kCachedSettingsName[] = "Morvalis cached settings";

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

static bool fileExists(const char* path) {
  return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

// Tried out, since rights alone do not tell; a file made for that goes again.
static bool mayWrite(const char* path) {
  const bool there = fileExists(path);
  HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            there ? OPEN_EXISTING : CREATE_NEW,
                            there ? FILE_ATTRIBUTE_NORMAL : FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  // Whoever has it open right now has no bearing on the rights.
  if (file == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
  CloseHandle(file);
  return true;
}

// In the folder for a user's own data; false when there is none or the path does not fit.
static bool usersOwnPath(bool forWriting, char* path, int32_t bytes) {
  char folder[MAX_PATH];
  wchar_t wide[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", wide, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  if (narrowPath(wide, folder, MAX_PATH) != NarrowAnswer::done) return false;
  const auto size = static_cast<size_t>(bytes);
  int fitting = std::snprintf(path, size, "%s\\Morvalis", folder);
  if (fitting < 0 || fitting >= bytes) return false;
  if (forWriting) CreateDirectoryA(path, nullptr);
  fitting = std::snprintf(path, size, "%s\\Morvalis\\%s", folder, kCachedSettingsName);
  return fitting >= 0 && fitting < bytes;
}

// Where the machine's file may not be written each user has one of their own; until it is there,
// the machine's is read.
bool cachedSettingsPath(bool forWriting, char* path, int32_t bytes) {
  char machines[MAX_PATH];
  std::snprintf(machines, MAX_PATH, "%s%s", kMachinesFolder, kCachedSettingsName);
  if (!mayWrite(machines) && usersOwnPath(forWriting, path, bytes) &&
      (forWriting || fileExists(path))) {
    return true;
  }
  std::snprintf(path, static_cast<size_t>(bytes), "%s", machines);
  return true;
}

std::FILE* openUserFile(const char* path) {
  return std::fopen(path, "rb");
}

// Others may read meanwhile, as the standard library's files allow as well. Only what is not there
// is made: opening may also fail while another program has the file.
bool overwriteUserFile(const char* path, const uint8_t* bytes, size_t count) {
  const bool isMade = takeMadeFile(path);
  HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    if (isMade) DeleteFileA(path);
    return false;
  }
  const bool isNew = isMade || GetLastError() != ERROR_ALREADY_EXISTS;
  DWORD written = 0;
  bool whole = WriteFile(file, bytes, static_cast<DWORD>(count), &written, nullptr) != 0 &&
               written == count && FlushFileBuffers(file) != 0;
  whole = CloseHandle(file) != 0 && whole;
  if (!whole && isNew) DeleteFileA(path);
  return whole;
}

// Beside the module, as the package has it.
bool ownPicturesFolder(char* folder, int32_t bytes) {
  char module[MAX_PATH] = {};
  wchar_t wide[MAX_PATH];
  const DWORD length = GetModuleFileNameW(moduleInstance(), wide, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  if (narrowPath(wide, module, MAX_PATH) != NarrowAnswer::done) return false;
  char* name = std::strrchr(module, '\\');
  if (name == nullptr) return false;
  name[1] = 0;
  return std::snprintf(folder, static_cast<size_t>(bytes), "%senvironments and textures\\",
                       module) < bytes;
}
