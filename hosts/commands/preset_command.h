// preset_command: `morvalis preset`, settings files without a picture.

#pragma once

#include <string>

#include "hosts/effect_runs/effect_choices.h"

struct PresetShowOptions {
  std::string file;
  bool json = false;
};

struct PresetSaveOptions {
  std::string output;
  EffectOptions effect;
};

int runPresetShow(const PresetShowOptions& options);
int runPresetSave(const PresetSaveOptions& options);
