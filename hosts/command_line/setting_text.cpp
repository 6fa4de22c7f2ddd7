#include "hosts/command_line/setting_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

#include "hosts/command_line/command_failure.h"

// --- Names ----------------------------------------------------------------------------------

// Names of choices have blanks, which a shell makes awkward to type.
static std::string foldedName(const std::string& text) {
  std::string folded = text;
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c == '-' || c == '_') c = ' ';
  }
  return folded;
}

// How many letters have to be inserted, removed or replaced to turn one text into the other.
static size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

static std::string nearestName(const std::string& text, const std::vector<const char*>& names) {
  const std::string folded = foldedName(text);
  std::string nearest;
  size_t least = SIZE_MAX;
  for (const char* name : names) {
    const size_t distance = editDistance(folded, foldedName(name));
    if (distance >= least) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}

static std::vector<const char*> choicesOf(const SettingRange& row) {
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
  if (row.choices != nullptr) message += " or one of: " + formatChoices(row);
  failOnUsage(message);
}

static bool parseChoice(const std::string& value, const SettingRange& row, double* number) {
  const std::vector<const char*> names = choicesOf(row);
  for (size_t i = 0; i < names.size(); ++i) {
    if (foldedName(value) != foldedName(names[i])) continue;
    *number = row.minimum + static_cast<int32_t>(i);
    return true;
  }
  return false;
}

SettingAssignment parseAssignment(const std::string& text) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos) failOnUsage("--set " + text + ": write it as NAME=VALUE");
  const std::string name = text.substr(0, equals);
  const std::string value = text.substr(equals + 1);
  const SettingRange* row = findSetting(name.c_str());
  if (row == nullptr) {
    std::vector<const char*> names;
    for (int32_t i = 0; i < kSettingRangeCount; ++i) names.push_back(kSettingRanges[i].name);
    failOnUsage("--set " + text + ": there is no setting \"" + name + "\"; did you mean \"" +
                nearestName(name, names) + "\"?");
  }

  SettingAssignment assignment = {row, {0, 0, 0}};
  if (parseChoice(value, *row, &assignment.values[0])) return assignment;
  if (row->choices != nullptr && !looksLikeNumber(value)) {
    failOnValue(text, *row,
                "no such choice, perhaps \"" + nearestName(value, choicesOf(*row)) + "\"");
  }
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

// The shortest digits that give the same single-precision value again.
static std::string formatNumber(double value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof(digits), static_cast<float>(value),
                                 std::chars_format::fixed);
  return std::string(digits, end.ptr);
}

std::string formatDefault(const SettingRange& row) {
  if (row.choices != nullptr) {
    return row.choices[static_cast<int32_t>(row.defaults[0]) - row.minimum];
  }
  std::string text = formatNumber(row.defaults[0]);
  for (int i = 1; i < componentCount(row); ++i) {
    text += ',';
    text += formatNumber(row.defaults[i]);
  }
  return text;
}

std::string formatChoices(const SettingRange& row) {
  std::string text;
  int32_t number = row.minimum;
  for (const char* name : choicesOf(row)) {
    if (!text.empty()) text += ", ";
    text += std::to_string(number++) + " " + name;
  }
  return text;
}
