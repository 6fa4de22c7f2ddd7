// setting_text: settings as the user writes and reads them.
// parseAssignment: `NAME=VALUE` to a checked value; ends the command when it is not one.
// applyAssignment: that value to the record.
// formatRange, formatDefault, formatChoices: a row of the table as text that parseAssignment takes.
// formatValue: what a record holds in a row's field, the same way.

#pragma once

#include <string>
#include <vector>

#include "settings/setting_ranges.h"

struct SettingAssignment {
  const SettingRange* row;
  double values[3];  // the number, or the three components; exact for every form
};

SettingAssignment parseAssignment(const std::string& text);

// Whether the text begins with a setting's name and "=".
bool isSettingAssignment(const std::string& text);

// What is wrong with one among the files, since each needs a --set of its own.
std::string describeStraySetting(const std::string& text);
void applyAssignment(const SettingAssignment& assignment, EffectSettings* settings);

int componentCount(const SettingRange& row);
std::vector<std::string> choicesOf(const SettingRange& row);  // empty when the setting has none

// The shortest decimals that give the same single-precision value again.
std::string formatNumber(double value);
std::string formatRange(const SettingRange& row);
std::string formatDefault(const SettingRange& row);
std::string formatChoices(const SettingRange& row);  // numbers and names; empty for none

// The name of a choice, the number, or the three components; each component on its own.
std::string formatValue(const SettingRange& row, const EffectSettings& settings);
std::vector<std::string> componentsOf(const SettingRange& row, const EffectSettings& settings);
