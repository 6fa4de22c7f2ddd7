// choosers: what a back end supplies to let the user choose a file.

#pragma once

#include <cstdint>

struct FileChooser {
  const char* title;
  const char* filterName;        // as the user reads it
  const char* pattern;           // "*.bmp"
  const char* defaultExtension;  // "bmp"
};

// Each fills `path` with the full path chosen, zero-terminated; it is empty when the user cancelled
// or the path does not fit, or has no form in the character set that the module keeps paths in.
enum class ChooserAnswer { cancelled, chosen, tooLong, noName };
ChooserAnswer choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes);
ChooserAnswer choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes);

// Lets the user choose a colour, starting from the one given (red, green, blue). The chooser's own
// colours are kept between calls. False, with both as they were, when the user cancelled.
constexpr int32_t kCustomColors = 16;
bool choosePlatformColor(uint8_t color[3], uint8_t customColors[kCustomColors][3]);
