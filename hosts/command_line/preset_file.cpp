#include "hosts/command_line/preset_file.h"

#include <QFile>
#include <QFileInfo>

#include "entry/handles.h"
#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/file_access.h"
#include "persistence/path_parts.h"
#include "platform/user_files.h"
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

Preset readPreset(const std::string& file) {
  const QByteArray contents = readFileStart(file, "a settings file", kLargestSettingsFile);
  Preset preset = emptyPreset();
  decodeSettings(reinterpret_cast<const uint8_t*>(contents.constData()),
                 static_cast<size_t>(contents.size()), &preset.settings, &preset.decoded);
  dropReferenceBlocks(&preset.settings);
  const SettingsCheck check = checkSettings(preset.settings, preset.decoded);
  if (check == SettingsCheck::notSettings) failOnFile(file, "is not a settings file");
  if (check == SettingsCheck::damaged) failOnFile(file, "is damaged or cut off");
  return preset;
}

std::string nameInUtf8(const char* windowsName) {
  char name[kUtf8Bytes];
  pathFromWindowsName(windowsName, name, kUtf8Bytes);
  return name;
}

void writePreset(const EffectSettings& settings, const std::string names[kPictureNames],
                 const std::string& file) {
  uint8_t bytes[kLongestEncodedSettings];
  const char* const texts[kPictureNames] = {names[kEnvironmentName].c_str(),
                                            names[kTextureName].c_str()};
  const size_t count = encodeNamedSettings(&settings, texts, bytes);
  QByteArray contents(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
  const QFileInfo old(QFile::decodeName(file.c_str()));
  if (file != kStandardStream && old.exists() && old.size() > contents.size()) {
    contents += readWholeFile(file, "a settings file").mid(contents.size());
  }
  writeWholeFile(file, contents);
}
