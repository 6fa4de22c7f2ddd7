// choosers: the user chooses a picture or a preset file.

#pragma once

#include <cstdint>

constexpr int32_t kPictureFiles = 0;
constexpr int32_t kPresetFiles = 1;

// Each fills a path of kPathBytes bytes with the chosen full path; false when nothing was chosen.
// The user is told of a path that is too long.
bool chooseFileToOpen(char* path, int32_t kind, const char* title);
bool chooseFileToSave(char* path, int32_t kind, const char* title);
