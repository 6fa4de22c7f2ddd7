// apply_command: `morvalis apply`, the filter on picture files.

#pragma once

#include <string>
#include <vector>

#include "hosts/commands/saving_options.h"
#include "hosts/effect_choices/effect_choices.h"
#include "hosts/effect_runs/selection.h"

struct ApplyOptions {
  std::vector<std::string> images;
  std::string output;  // with {name}, {folder} for several pictures
  MaskOptions mask;
  EffectOptions effect;
  SavingOptions saving;
  std::string supersample;  // empty: as large as the picture
  std::string frame;        // of several pictures in one file; empty: all, or the first
  std::string seed;         // empty: the clock's
  std::string jobs = "1";
  bool keep = false;    // results take names that are free
  bool window = false;  // failures show in one
  bool color = false;   // a grey picture becomes one of colours
  bool quiet = false;
  bool verbose = false;
};

int runApplyCommand(const ApplyOptions& options);
