// apply_command: `morvalis apply`, the filter on picture files.

#pragma once

#include <string>
#include <vector>

#include "hosts/commands/saving_options.h"
#include "hosts/effect_runs/effect_choices.h"

struct ApplyOptions {
  std::vector<std::string> images;
  std::string output;  // with {name} for several pictures
  std::string mask;    // empty: by alpha when there is an alpha channel
  EffectOptions effect;
  SavingOptions saving;
  std::string seed;  // empty: the clock's
  std::string jobs = "1";
  bool quiet = false;
};

int runApplyCommand(const ApplyOptions& options);
