#include "dialog/command_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "settings/effect_settings.h"
#include "settings/setting_fields.h"
#include "settings/settings_defaults.h"

struct TextWriter {
  char* text;
  size_t length;
};

static void append(TextWriter* writer, const char* format, const char* name, const char* value) {
  const size_t room = kCommandTextBytes - writer->length;
  const int written = std::snprintf(writer->text + writer->length, room, format, name, value);
  if (written > 0 && static_cast<size_t>(written) < room) {
    writer->length += static_cast<size_t>(written);
  }
  writer->text[writer->length] = 0;
}

// In quotes that a shell takes literally.
static void quote(const char* plain, char* quoted, size_t bytes) {
  size_t length = 0;
  const auto put = [&](const char* part) {
    for (; *part != 0 && length + 1 < bytes; ++part) quoted[length++] = *part;
  };
  put("'");
  for (; *plain != 0; ++plain) {
    const char one[2] = {*plain, 0};
    put(*plain == '\'' ? "'\\''" : one);
  }
  put("'");
  quoted[length] = 0;
}

// Commas between the components. The language that the program has set has no say in how numbers
// are written, and nine digits tell every single apart.
static void formatValue(const EffectSettings& settings, const SettingRange& range, char* value,
                        size_t bytes) {
  double values[3];
  readSetting(settings, range, values);
  char* at = value;
  char* end = value + bytes - 1;
  for (int32_t i = 0; i < settingComponents(range.form); ++i) {
    if (i > 0 && at < end) *at++ = ',';
    // A random radius may lie below the range, where no command line takes it.
    const double taken = std::clamp<double>(values[i], range.minimum, range.maximum);
    at = std::to_chars(at, end, taken, std::chars_format::general, 9).ptr;
  }
  *at = 0;
}

void writeCommandText(const EffectSettings& settings, char* text) {
  TextWriter writer = {text, 0};
  append(&writer, "morvalis apply IMAGE -o OUT%s%s", "", "");
  EffectSettings defaults;
  fillDefaultSettings(&defaults);
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    char value[128];
    char standard[128];
    formatValue(settings, kSettingRanges[i], value, sizeof(value));
    formatValue(defaults, kSettingRanges[i], standard, sizeof(standard));
    if (std::strcmp(value, standard) != 0) {
      append(&writer, " --set %s=%s", kSettingRanges[i].name, value);
    }
  }
  char path[4 * kPathBytes];
  if (settings.environmentPath[0] != 0) {
    quote(settings.environmentPath, path, sizeof(path));
    append(&writer, " --environment %s%s", path, "");
  }
  if (settings.textureChoice == kTextureChoiceFile && settings.texturePath[0] != 0) {
    quote(settings.texturePath, path, sizeof(path));
    append(&writer, " --texture %s%s", path, "");
  }
  if (dependsOnSeed(settings)) {
    char seed[16] = "";
    std::to_chars(seed, seed + sizeof(seed) - 1, settings.textureSeed);
    append(&writer, " --seed %s%s", seed, "");
  }
}
