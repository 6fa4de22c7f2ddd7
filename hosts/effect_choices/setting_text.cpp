#include "hosts/effect_choices/setting_text.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "hosts/process/command_failure.h"
#include "hosts/process/name_matching.h"

std::vector<std::string> choicesOf(const SettingRange& row) {
  if (row.choices == nullptr) return {};
  return {row.choices, row.choices + (row.maximum - row.minimum + 1)};
}

// --- Values ---------------------------------------------------------------------------------

int componentCount(const SettingRange& row) {
  return row.form == SettingForm::direction || row.form == SettingForm::color ? 3 : 1;
}

static bool looksLikeNumber(const std::string& text) {
  return !text.empty() && std::strchr("+-.0123456789", text.front()) != nullptr;
}

// A whole number of any size, or for directions any finite number. The system's language has no say
// in how numbers are written.
static bool parseNumber(const std::string& text, bool whole, double* value) {
  const char* begin = text.data();
  const char* end = begin + text.size();
  const auto [stop, error] = std::from_chars(begin, end, *value);
  if (begin == end || stop != end || error == std::errc::invalid_argument) return false;
  if (whole && text.find_first_not_of("-0123456789") != std::string::npos) return false;
  if (error == std::errc::result_out_of_range) *value = HUGE_VAL;
  return !std::isnan(*value) && looksLikeNumber(text);
}

static std::vector<std::string> splitAtCommas(const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ',') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

[[noreturn]] static void failOnValue(const std::string& text, const SettingRange& row,
                                     const std::string& reason) {
  std::string message = "--set " + text + ": " + reason + "; " + row.name + " takes ";
  if (componentCount(row) == 3) message += "three values, each ";
  message += formatRange(row);
  if (row.form == SettingForm::color) message += ", or #RRGGBB";
  if (row.choices != nullptr) message += " or one of: " + formatChoices(row);
  failOnUsage(message);
}

static bool parseChoice(const std::string& value, const SettingRange& row, double* number) {
  const std::vector<std::string> names = choicesOf(row);
  for (size_t i = 0; i < names.size(); ++i) {
    if (foldedName(value) != foldedName(names[i])) continue;
    *number = row.minimum + static_cast<int32_t>(i);
    return true;
  }
  return false;
}

// "#ff8000", or "#f80" for the same: two digits a channel, 255 being the brightest.
static bool parseHexColor(const std::string& value, const SettingRange& row, double* values) {
  if (row.form != SettingForm::color || value.empty() || value[0] != '#') return false;
  const size_t digits = (value.size() - 1) / 3;
  if (digits < 1 || digits > 2 || value.size() != 1 + 3 * digits) return false;
  for (size_t i = 0; i < 3; ++i) {
    int channel = 0;
    const char* begin = value.data() + 1 + i * digits;
    const char* end = begin + digits;
    const auto [stop, error] = std::from_chars(begin, end, channel, 16);
    if (stop != end || error != std::errc() || *begin == '-') return false;
    values[i] = channel * (digits == 1 ? 0x1111 : 0x101);
  }
  return true;
}

[[noreturn]] static void failOnName(const std::string& text, const std::string& name) {
  std::string message = "--set " + text + ": there is no setting \"" + name + "\"";
  for (const char* option : {"environment", "mask", "pictures", "preset", "seed"}) {
    if (name == option) failOnUsage(message + ", but an option --" + option);
  }
  std::vector<std::string> names;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) names.emplace_back(kSettingRanges[i].name);
  failOnUsage(message + suggestionFor(name, names));
}

bool isSettingAssignment(const std::string& text) {
  return findSetting(text.substr(0, text.find('=')).c_str()) != nullptr &&
         text.find('=') != std::string::npos;
}

std::string describeStraySetting(const std::string& text) {
  return text + ": put --set before it, as before every setting: --set " + text;
}

SettingAssignment parseAssignment(const std::string& text) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    failOnUsage("--set " + text + ": write it as NAME=VALUE");
  }
  const std::string name = text.substr(0, equals);
  const std::string value = text.substr(equals + 1);
  const SettingRange* row = findSetting(name.c_str());
  if (row == nullptr) failOnName(text, name);

  SettingAssignment assignment = {row, {0, 0, 0}};
  if (parseChoice(value, *row, &assignment.values[0])) return assignment;
  if (row->choices != nullptr && !looksLikeNumber(value)) {
    failOnValue(text, *row, "no such choice" + suggestionFor(value, choicesOf(*row)));
  }
  if (parseHexColor(value, *row, assignment.values)) return assignment;
  const std::vector<std::string> parts = splitAtCommas(value);
  if (parts.size() != static_cast<size_t>(componentCount(*row))) {
    failOnValue(text, *row, componentCount(*row) == 3 ? "not three values" : "not one value");
  }
  const bool whole = row->form != SettingForm::direction;
  for (size_t i = 0; i < parts.size(); ++i) {
    double* number = &assignment.values[i];
    if (!parseNumber(parts[i], whole, number)) {
      failOnValue(text, *row, whole ? "not a whole number" : "not a number");
    }
    if (*number < row->minimum || *number > row->maximum) failOnValue(text, *row, "out of range");
  }
  return assignment;
}

void applyAssignment(const SettingAssignment& assignment, EffectSettings* settings) {
  const double* values = assignment.values;
  void* field = reinterpret_cast<char*>(settings) + assignment.row->offset;
  switch (assignment.row->form) {
    case SettingForm::number:
      *static_cast<int32_t*>(field) = static_cast<int32_t>(values[0]);
      break;
    case SettingForm::toggle:
      *static_cast<uint32_t*>(field) = static_cast<uint32_t>(values[0]);
      break;
    case SettingForm::direction:
      *static_cast<Direction*>(field) = {static_cast<float>(values[0]),
                                         static_cast<float>(values[1]),
                                         static_cast<float>(values[2])};
      break;
    case SettingForm::color:
      *static_cast<Color16*>(field) = {static_cast<uint16_t>(values[0]),
                                       static_cast<uint16_t>(values[1]),
                                       static_cast<uint16_t>(values[2])};
      break;
  }
}

// --- Rows as text ---------------------------------------------------------------------------

std::string formatRange(const SettingRange& row) {
  return std::to_string(row.minimum) + " to " + std::to_string(row.maximum);
}

std::string formatNumber(double value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof(digits), static_cast<float>(value),
                                 std::chars_format::fixed);
  return std::string(digits, end.ptr);
}

static std::string joined(const std::vector<std::string>& parts) {
  std::string text = parts[0];
  for (size_t i = 1; i < parts.size(); ++i) text += "," + parts[i];
  return text;
}

std::string formatDefault(const SettingRange& row) {
  if (row.choices != nullptr) {
    return row.choices[static_cast<int32_t>(row.defaults[0]) - row.minimum];
  }
  std::vector<std::string> parts;
  for (int i = 0; i < componentCount(row); ++i) parts.push_back(formatNumber(row.defaults[i]));
  return joined(parts);
}

std::string formatChoices(const SettingRange& row) {
  std::string text;
  int32_t number = row.minimum;
  for (const std::string& name : choicesOf(row)) {
    if (!text.empty()) text += ", ";
    text += std::to_string(number++) + " " + name;
  }
  return text;
}

std::vector<std::string> componentsOf(const SettingRange& row, const EffectSettings& settings) {
  const void* field = reinterpret_cast<const char*>(&settings) + row.offset;
  switch (row.form) {
    case SettingForm::toggle:
      return {std::to_string(*static_cast<const uint32_t*>(field))};
    case SettingForm::direction: {
      const auto* direction = static_cast<const Direction*>(field);
      return {formatNumber(direction->x), formatNumber(direction->y), formatNumber(direction->z)};
    }
    case SettingForm::color: {
      const auto* color = static_cast<const Color16*>(field);
      return {std::to_string(color->red), std::to_string(color->green),
              std::to_string(color->blue)};
    }
    default:
      return {std::to_string(*static_cast<const int32_t*>(field))};
  }
}

std::string formatValue(const SettingRange& row, const EffectSettings& settings) {
  if (row.choices != nullptr) {
    const auto* field = reinterpret_cast<const char*>(&settings) + row.offset;
    const int32_t number = *reinterpret_cast<const int32_t*>(field);
    if (number >= row.minimum && number <= row.maximum) return row.choices[number - row.minimum];
  }
  return joined(componentsOf(row, settings));
}
