// choosers: what a back end supplies to let the user choose a file.

#pragma once

#include <cstdint>

struct FileChooser {
  const char* title;
  const char* filterName;        // as the user reads it
  const char* pattern;           // "*.bmp"
  const char* defaultExtension;  // "bmp"
};

// Each fills `path` with the full path chosen, zero-terminated. False, with an empty path, when the
// user cancelled or the path does not fit.
bool choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes);
bool choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes);
