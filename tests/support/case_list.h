// case_list: the list of golden cases, one case a line of plain text.

#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "settings/effect_settings.h"

// Paths are relative to the folder of the list.
struct GoldenCase {
  std::string name;
  std::string image;
  std::string mask;  // empty: no mask
  std::string environment;
  std::string texture;  // empty: no texture file
  uint32_t seed = 0;
  int32_t previewScale = 0;                                   // 0: a final render
  std::string effect;                                         // the expected picture
  std::vector<std::pair<std::string, std::string>> settings;  // that differ from the defaults
};

// False when the list is missing, empty, or has a line that is not a case.
bool readCaseList(const std::string& path, std::vector<GoldenCase>* cases);

// Writes a case's settings over those in `settings`; false at a name that no setting has, or a
// value that is not of its form.
bool applyCaseSettings(const GoldenCase& golden, EffectSettings* settings);
