#include "hosts/effect_choices/preset_file.h"

#include <sys/stat.h>

#include <algorithm>

#include "entry/handles.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/interrupt.h"
#include "persistence/path_parts.h"
#include "platform/user_files.h"
#include "settings/setting_fields.h"
#include "settings/settings_defaults.h"

constexpr int32_t kUtf8Bytes = 3 * kPathBytes;  // a Windows character takes three at most

Preset emptyPreset() {
  Preset preset = {};
  fillDefaultSettings(&preset.settings);
  return preset;
}

// The blocks only matter for the names in them, which have been read.
static void dropReferenceBlocks(EffectSettings* settings) {
  disposeModuleHandle(settings->environmentRef);
  disposeModuleHandle(settings->textureRef);
  settings->environmentRef = nullptr;
  settings->textureRef = nullptr;
}

// Values that the user could not set.
static std::string odditiesIn(const Preset& preset) {
  std::string text;
  if (preset.decoded.version < 1) {
    text = "is of version " + std::to_string(preset.decoded.version) + ", which nothing writes";
  }
  std::string beyond;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    double values[3];
    readSetting(preset.settings, range, values);
    const int32_t count = settingComponents(range.form);
    const bool within = std::all_of(values, values + count, [&range](double value) {
      return value >= range.minimum && value <= range.maximum;
    });
    if (within) continue;
    beyond += (beyond.empty() ? "" : ", ") + std::string(range.name) + "=" +
              formatValue(range, preset.settings) + " (" + formatRange(range) + ")";
  }
  if (beyond.empty()) return text;
  return text + (text.empty() ? "" : " and ") + "holds what is out of range: " + beyond;
}

Preset readPreset(const std::string& file) {
  const FileBytes contents = readFileStart(file, "a settings file", kLargestSettingsFile);
  Preset preset = emptyPreset();
  decodeSettings(contents.data(), contents.size(), &preset.settings, &preset.decoded);
  dropReferenceBlocks(&preset.settings);
  const SettingsCheck check = checkSettings(preset.settings, preset.decoded);
  if (check == SettingsCheck::notSettings) failOnFile(file, "is not a settings file");
  if (check == SettingsCheck::damaged) failOnFile(file, "is damaged or cut off");
  preset.oddities = odditiesIn(preset);
  return preset;
}

std::string nameInUtf8(const char* windowsName) {
  char name[kUtf8Bytes];
  pathFromWindowsName(windowsName, name, kUtf8Bytes);
  return name;
}

void checkReplaceable(const std::string& file) {
  struct stat old = {};
  if (file == kStandardStream || stat(file.c_str(), &old) != 0 || old.st_size == 0) return;
  try {
    readPreset(file);
  } catch (const CommandFailure&) {
    stopIfInterrupted();
    failOnFile(file, "is there already and is no settings file; choose another name");
  }
}

void writePreset(const EffectSettings& settings, const std::string names[kPictureNames],
                 const std::string& file) {
  uint8_t bytes[kLongestEncodedSettings];
  const char* const texts[kPictureNames] = {names[kEnvironmentName].c_str(),
                                            names[kTextureName].c_str()};
  const size_t count = encodeNamedSettings(&settings, texts, bytes);
  FileBytes contents(bytes, bytes + count);
  struct stat old = {};
  checkReplaceable(file);
  if (file != kStandardStream && stat(file.c_str(), &old) == 0 &&
      static_cast<size_t>(old.st_size) > count) {
    const FileBytes before = readWholeFile(file, "a settings file");
    const auto kept = static_cast<ptrdiff_t>(std::min(count, before.size()));
    contents.insert(contents.end(), before.begin() + kept, before.end());
  }
  writeWholeFile(file, contents);
}
