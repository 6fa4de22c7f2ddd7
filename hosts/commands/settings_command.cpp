#include "hosts/commands/settings_command.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "hosts/commands/json_text.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/process/command_failure.h"

constexpr size_t kLineColumns = 100;
constexpr size_t kGap = 2;

struct ColumnWidths {
  size_t name;
  size_t range;
  size_t standard;
};

static ColumnWidths measureColumns() {
  ColumnWidths widths = {4, 5, 7};  // of the headings
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    widths.name = std::max(widths.name, std::string(row.name).size());
    widths.range = std::max(widths.range, formatRange(row).size());
    widths.standard = std::max(widths.standard, formatDefault(row).size());
  }
  return widths;
}

static void printRow(const ColumnWidths& widths, const std::string& name, const std::string& range,
                     const std::string& standard, const std::string& meaning) {
  std::printf("%-*s%-*s%-*s%s\n", static_cast<int>(widths.name + kGap), name.c_str(),
              static_cast<int>(widths.range + kGap), range.c_str(),
              static_cast<int>(widths.standard + kGap), standard.c_str(), meaning.c_str());
}

// The choices stand below, broken between two of them.
static void printChoices(const ColumnWidths& widths, const std::string& choices) {
  const size_t room = kLineColumns - widths.name - kGap;
  size_t start = 0;
  while (start < choices.size()) {
    size_t end = choices.size();
    if (end - start > room) {
      const size_t comma = choices.rfind(", ", start + room - 1);
      if (comma != std::string::npos && comma > start) end = comma + 1;
    }
    std::printf("%*s%s\n", static_cast<int>(widths.name + kGap), "",
                choices.substr(start, end - start).c_str());
    start = choices.find_first_not_of(' ', end);
  }
}

static const char* formOf(const SettingRange& row) {
  switch (row.form) {
    case SettingForm::toggle:
      return "toggle";
    case SettingForm::direction:
      return "direction";
    case SettingForm::color:
      return "color";
    default:
      return "number";
  }
}

static std::string jsonRow(const SettingRange& row) {
  std::vector<std::string> standard;
  for (int i = 0; i < componentCount(row); ++i) standard.push_back(formatNumber(row.defaults[i]));
  std::vector<std::string> choices;
  for (const std::string& name : choicesOf(row)) choices.push_back(jsonString(name));
  return "{\"name\": " + jsonString(row.name) + ", \"form\": " + jsonString(formOf(row)) +
         ", \"minimum\": " + std::to_string(row.minimum) +
         ", \"maximum\": " + std::to_string(row.maximum) +
         ", \"default\": " + (standard.size() == 1 ? standard[0] : jsonArray(standard)) +
         ", \"choices\": " + jsonArray(choices) + ", \"meaning\": " + jsonString(row.meaning) + "}";
}

static void printJson() {
  std::puts("[");
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const char* end = i + 1 == kSettingRangeCount ? "" : ",";
    std::printf("  %s%s\n", jsonRow(kSettingRanges[i]).c_str(), end);
  }
  std::puts("]");
}

static void printTable() {
  const ColumnWidths widths = measureColumns();
  printRow(widths, "NAME", "RANGE", "DEFAULT", "MEANING");
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    const bool threefold = componentCount(row) == 3;
    printRow(widths, row.name, formatRange(row), formatDefault(row),
             row.meaning + std::string(threefold ? " (three values)" : ""));
    printChoices(widths, formatChoices(row));
  }
}

int runSettingsCommand(bool json) {
  if (json) {
    printJson();
  } else {
    printTable();
  }
  return kExitDone;
}
