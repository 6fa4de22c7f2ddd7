#include "hosts/effect_choices/last_settings.h"

#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "platform/remembered_values.h"
#include "platform/user_files.h"

Preset readLastSettings() {
  char path[kPathBytes];
  if (!cachedSettingsPath(/*forWriting=*/false, path, kPathBytes)) {
    throw CommandFailure{kExitFailed, "--last: the folder of the last settings cannot be named"};
  }
  if (!fileExists(path)) {
    throw CommandFailure{kExitFailed,
                         "--last: no dialog has been confirmed yet; `morvalis edit` opens it "
                         "(there is no " +
                             std::string(path) + ")"};
  }
  Preset preset = readPreset(path);
  EffectSettings& settings = preset.settings;
  readRememberedValue("ChromeFile", settings.environmentPath, kPathBytes);
  readRememberedValue("TextureFile", settings.texturePath, kPathBytes);
  return preset;
}
