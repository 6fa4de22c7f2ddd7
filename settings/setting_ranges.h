// setting_ranges: what the user can set, one row per setting: where it lies in the record, its
// range, its default, and what it does. Defaults, command line and listings all read this table.

#pragma once

#include <cstddef>
#include <cstdint>

#include "settings/effect_settings.h"

enum class SettingForm {
  number,     // int32_t
  toggle,     // uint32_t, 0 or 1
  direction,  // Direction, three singles
  color,      // Color16, three 16-bit channels
};

struct SettingRange {
  const char* name;  // field of EffectSettings
  SettingForm form;
  size_t offset;    // bytes into EffectSettings
  int32_t minimum;  // of the number, or of each component
  int32_t maximum;
  double defaults[3];          // the number, or the three components
  const char* const* choices;  // names of the values from `minimum` on, null when it has none
  const char* meaning;
};

extern const SettingRange kSettingRanges[];
extern const int32_t kSettingRangeCount;

// The row of a setting by its name; null when there is none.
const SettingRange* findSetting(const char* name);
