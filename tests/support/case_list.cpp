#include "tests/support/case_list.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "settings/setting_ranges.h"

namespace {

std::string fileOrNone(const std::string& word) {
  return word == "-" ? std::string() : word;
}

bool readCase(const std::string& line, GoldenCase* golden) {
  std::istringstream words(line);
  std::string mask, texture, word;
  if (!(words >> golden->name >> golden->image >> mask >> golden->environment >> texture >>
        golden->seed >> golden->previewScale >> golden->effect)) {
    return false;
  }
  golden->mask = fileOrNone(mask);
  golden->texture = fileOrNone(texture);
  while (words >> word) {
    const size_t equals = word.find('=');
    if (equals == std::string::npos) return false;
    golden->settings.emplace_back(word.substr(0, equals), word.substr(equals + 1));
  }
  return true;
}

bool splitNumbers(const std::string& text, size_t count, double* numbers) {
  const char* at = text.c_str();
  for (size_t n = 0; n < count; ++n) {
    char* end = nullptr;
    numbers[n] = std::strtod(at, &end);
    if (end == at || *end != (n + 1 < count ? ',' : '\0')) return false;
    at = end + 1;
  }
  return true;
}

bool applySetting(const std::string& name, const std::string& text, EffectSettings* settings) {
  const SettingRange* row = findSetting(name.c_str());
  if (row == nullptr) return false;
  const bool single = row->form == SettingForm::number || row->form == SettingForm::toggle;
  double numbers[3] = {0, 0, 0};
  if (!splitNumbers(text, single ? 1 : 3, numbers)) return false;
  char* field = reinterpret_cast<char*>(settings) + row->offset;
  if (single) {
    const int32_t value = static_cast<int32_t>(numbers[0]);  // a toggle has the same bits
    std::memcpy(field, &value, sizeof(value));
  } else if (row->form == SettingForm::direction) {
    const Direction value = {static_cast<float>(numbers[0]), static_cast<float>(numbers[1]),
                             static_cast<float>(numbers[2])};
    std::memcpy(field, &value, sizeof(value));
  } else {
    const Color16 value = {static_cast<uint16_t>(numbers[0]), static_cast<uint16_t>(numbers[1]),
                           static_cast<uint16_t>(numbers[2])};
    std::memcpy(field, &value, sizeof(value));
  }
  return true;
}

}  // namespace

bool readCaseList(const std::string& path, std::vector<GoldenCase>* cases) {
  std::ifstream file(path);
  std::string line;
  cases->clear();
  while (std::getline(file, line)) {
    if (line.empty()) continue;
    GoldenCase golden;
    if (!readCase(line, &golden)) return false;
    cases->push_back(golden);
  }
  return !cases->empty();
}

bool applyCaseSettings(const GoldenCase& golden, EffectSettings* settings) {
  for (const auto& [name, text] : golden.settings) {
    if (!applySetting(name, text, settings)) return false;
  }
  return true;
}
