#include "hosts/windows_host/kept_values.h"

#include <cstdlib>
#include <fstream>

#include "hosts/windows_host/picture_files.h"
#include "platform/windows/windows_api.h"

constexpr char kKey[] = "SOFTWARE\\Quorrelin\\Morvalis\\2.08f";
constexpr const char* kNames[] = {"EnviroPath", "ChromeFile", "TextureFile"};
static HKEY root = HKEY_LOCAL_MACHINE;
static std::string settingsFile = "c:\\Windows\\Temp\\Morvalis cached settings";

void keepValuesForUser() {
  root = HKEY_CURRENT_USER;
  const char* folder = std::getenv("LOCALAPPDATA");
  if (folder == nullptr) failWith("there is no folder for the user's data");
  settingsFile = std::string(folder) + "\\Morvalis\\Morvalis cached settings";
}

static HKEY openKey() {
  HKEY key = nullptr;
  if (RegCreateKeyA(root, kKey, &key) != ERROR_SUCCESS) {
    failWith("the registry key cannot be opened");
  }
  return key;
}

void setKeptValue(const char* name, const std::string& text) {
  if (text.empty()) return;
  HKEY key = openKey();
  if (text == "-") {
    RegDeleteValueA(key, name);
  } else {
    RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>(text.size() + 1));
  }
  RegCloseKey(key);
}

void forgetKeptValues() {
  for (const char* name : kNames) setKeptValue(name, "-");
  DeleteFileA(settingsFile.c_str());
}

void saveKeptValues(const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  HKEY key = openKey();
  for (const char* name : kNames) {
    BYTE value[1024] = {};
    DWORD type = 0;
    DWORD bytes = sizeof(value) - 1;
    if (RegQueryValueExA(key, name, nullptr, &type, value, &bytes) != ERROR_SUCCESS) continue;
    file << name << ' ' << type << ' ' << bytes << ' ' << reinterpret_cast<const char*>(value)
         << '\n';
  }
  RegCloseKey(key);
}

void saveKeptSettings(const std::string& path) {
  std::ifstream file(settingsFile, std::ios::binary);
  writeBytes(path, file ? readBytes(settingsFile) : std::vector<uint8_t>());
}
