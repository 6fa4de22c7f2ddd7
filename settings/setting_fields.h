// setting_fields: a setting's value in a record, whatever its form.

#pragma once

#include "settings/setting_ranges.h"

// 3 for a direction or a colour, else 1.
int32_t settingComponents(SettingForm form);

// Each setting as its components; a double holds every form exactly. Components that the form does
// not have are 0, and are not written.
void readSetting(const EffectSettings& settings, const SettingRange& range, double values[3]);
void writeSetting(EffectSettings* settings, const SettingRange& range, const double values[3]);

// Brings every setting into its range.
void limitSettings(EffectSettings* settings);
