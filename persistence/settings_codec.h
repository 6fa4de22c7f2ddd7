// settings_codec: the settings record to and from the bytes of a settings file. No files, no
// pictures: what is named is told, and what to do about it is the caller's.

#pragma once

#include <cstddef>
#include <cstdint>

#include "persistence/settings_items.h"
#include "settings/effect_settings.h"

// No file of the format needs more; a reader need not look at what lies beyond.
constexpr size_t kLargestSettingsFile = 192 * 1024;

// The longest file that encodeSettings writes.
constexpr size_t kLongestEncodedSettings = 1024;

// Writes the settings, at version 31, with the file names of both picture paths. The number of
// bytes; `bytes` holds kLongestEncodedSettings.
size_t encodeSettings(const EffectSettings* settings, uint8_t* bytes);

// The same with other names, in the Windows character set, each of less than kPathBytes bytes.
size_t encodeNamedSettings(const EffectSettings* settings, const char* const names[kPictureNames],
                           uint8_t* bytes);

struct DecodedSettings {
  int32_t version;
  bool complete;     // false: the bytes ended early, or a length is more than they hold
  bool outOfMemory;  // for a reference block; not complete then
  bool hasNames;     // a version that can name pictures
  char names[kPictureNames][kPathBytes];  // Windows character set; without folder, "" for none
};

// Whether what has been read is a settings file: other files decode to something, too.
enum class SettingsCheck {
  sound,
  outOfRange,   // whole, with values that the user could not set
  notSettings,  // another kind of file
  damaged,      // cut off
};
SettingsCheck checkSettings(const EffectSettings& settings, const DecodedSettings& decoded);

// Reads bytes of any version into the settings. Fields whose items the bytes do not reach stay as
// they were; nothing is limited to its range or derived. Reference blocks go to new module handles
// that replace the fields' old ones.
void decodeSettings(const uint8_t* bytes, size_t count, EffectSettings* settings,
                    DecodedSettings* decoded);
