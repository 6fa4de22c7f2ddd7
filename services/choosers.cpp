#include "services/choosers.h"

#include <cstring>

#include "platform/choosers.h"
#include "services/alerts.h"
#include "settings/effect_settings.h"

static FileChooser chooserOf(int32_t kind, const char* title) {
  if (kind == kPresetFiles) return {title, "Morvalis presets (*.q9q)", "*.q9q", "q9q"};
  return {title, "Bitmap files (*.bmp)", "*.bmp", "bmp"};
}

static bool isChosen(ChooserAnswer answer) {
  if (answer == ChooserAnswer::tooLong) showStringAlert(kPathTooLongString);
  if (answer == ChooserAnswer::noName) showStringAlert(kNameUnusableString);
  return answer == ChooserAnswer::chosen;
}

bool chooseFileToOpen(char* path, int32_t kind, const char* title) {
  std::memset(path, 0, kPathBytes);  // the whole field may be kept
  return isChosen(choosePlatformFileToOpen(chooserOf(kind, title), path, kPathBytes));
}

bool chooseFileToSave(char* path, int32_t kind, const char* title) {
  std::memset(path, 0, kPathBytes);
  return isChosen(choosePlatformFileToSave(chooserOf(kind, title), path, kPathBytes));
}
