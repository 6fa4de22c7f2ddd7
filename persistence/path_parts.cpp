#include "persistence/path_parts.h"

#include <algorithm>
#include <cstring>

#include "platform/user_files.h"
#include "services/counted_text.h"
#include "settings/effect_settings.h"

constexpr char kPictureSuffix[] = ".bmp";
constexpr size_t kSuffixLength = sizeof(kPictureSuffix) - 1;

const char* fileNameOf(const char* path) {
  const char* separator = std::strrchr(path, pathSeparator());
  return separator == nullptr ? path : separator + 1;
}

void fileNameForSettings(const char* path, char* name) {
  name[0] = 0;
  if (std::strchr(path, pathSeparator()) == nullptr) return;
  windowsNameFromPath(fileNameOf(path), name, kPathBytes);
}

void normalisePictureName(char* name) {
  for (char* c = name; *c != 0; ++c) *c = lowerCaseAscii(*c);
  size_t length = std::strlen(name);
  if (length >= kSuffixLength && std::strcmp(name + length - kSuffixLength, kPictureSuffix) == 0) {
    length -= kSuffixLength;
  }
  length = std::min(length, size_t{kPathBytes} - 1 - kSuffixLength);
  std::memcpy(name + length, kPictureSuffix, sizeof(kPictureSuffix));
}
