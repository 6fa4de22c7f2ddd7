// setting_text: settings as the user writes and reads them.
// parseAssignment: `NAME=VALUE` to a checked value; ends the command when it is not one.
// applyAssignment: that value to the record.
// formatRange, formatDefault, formatChoices: a row of the table as text that parseAssignment takes.

#pragma once

#include <string>

#include "settings/setting_ranges.h"

struct SettingAssignment {
  const SettingRange* row;
  double values[3];  // the number, or the three components; exact for every form
};

SettingAssignment parseAssignment(const std::string& text);
void applyAssignment(const SettingAssignment& assignment, EffectSettings* settings);

int componentCount(const SettingRange& row);
std::string formatRange(const SettingRange& row);
std::string formatDefault(const SettingRange& row);
std::string formatChoices(const SettingRange& row);  // empty when the setting has none
