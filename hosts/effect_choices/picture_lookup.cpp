#include "hosts/effect_choices/picture_lookup.h"

#include <cstdio>
#include <cstring>

#include "hosts/effect_choices/preset_file.h"
#include "hosts/effect_choices/preset_lookup.h"
#include "hosts/process/file_names.h"
#include "persistence/path_parts.h"
#include "platform/user_files.h"

constexpr char kUsualName[] = "environments and textures";

std::string usualPictureFolder(const std::string& presetFile) {
  const std::string path = wholePath(presetFile);
  const std::string marker = "/" + std::string(kUsualName) + "/";
  const size_t found = path.find(marker);
  if (found != std::string::npos) return path.substr(0, found + marker.size() - 1);
  const std::string folder = folderOf(path);
  return (folder == "/" ? "" : folder) + "/" + kUsualName;
}

std::string findPictureByName(const std::string& folder, const char* windowsName) {
  char normalised[kPathBytes];
  std::snprintf(normalised, sizeof(normalised), "%s", windowsName);
  normalisePictureName(normalised);
  const std::string name = nameInUtf8(normalised);
  if (name.find('/') != std::string::npos) return "";
  std::string path = wholePath(folder + "/" + name);
  path.resize(path.size() + kPathBytes);  // letters with accents taken apart need more room
  takeFileAsWritten(path.data(), static_cast<int32_t>(path.size()));
  path.resize(std::strlen(path.c_str()));
  return isOrdinaryFile(path) ? path : "";
}

std::string findPictureOfPreset(const std::string& folder, const char* windowsName) {
  const std::string file = findPictureByName(folder, windowsName);
  const std::vector<std::string> own = file.empty() ? ownPresets() : std::vector<std::string>();
  return own.empty() ? file : findPictureByName(usualPictureFolder(own[0]), windowsName);
}
