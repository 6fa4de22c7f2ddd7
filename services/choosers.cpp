#include "services/choosers.h"

#include "platform/choosers.h"
#include "settings/effect_settings.h"

static FileChooser chooserOf(int32_t kind, const char* title) {
  if (kind == kPresetFiles) return {title, "Morvalis presets (*.q9q)", "*.q9q", "q9q"};
  return {title, "Bitmap files (*.bmp)", "*.bmp", "bmp"};
}

bool chooseFileToOpen(char* path, int32_t kind, const char* title) {
  path[0] = 0;
  return choosePlatformFileToOpen(chooserOf(kind, title), path, kPathBytes);
}

bool chooseFileToSave(char* path, int32_t kind, const char* title) {
  path[0] = 0;
  return choosePlatformFileToSave(chooserOf(kind, title), path, kPathBytes);
}
