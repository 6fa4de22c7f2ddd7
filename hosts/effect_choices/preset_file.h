// preset_file: settings files as the program reads and writes them. Every failure ends the command.

#pragma once

#include <string>

#include "persistence/settings_codec.h"
#include "settings/effect_settings.h"

struct Preset {
  EffectSettings settings;  // the file's on top of the defaults
  DecodedSettings decoded;
  std::string oddities;  // what no program of today writes; empty: nothing
};

// A file that is there as a whole.
Preset readPreset(const std::string& file);

// The settings on top of the defaults, without any file.
Preset emptyPreset();

// A name that stands in a settings file, in UTF-8.
std::string nameInUtf8(const char* windowsName);

// Whatever else stands under the name is not to be lost by a slip.
void checkReplaceable(const std::string& file);

// The names are in the Windows character set, of less than kPathBytes bytes; "" for none. A longer
// old file keeps its tail, which readers never look at. The file as a whole, in its place, or not
// at all.
void writePreset(const EffectSettings& settings, const std::string names[kPictureNames],
                 const std::string& file);
