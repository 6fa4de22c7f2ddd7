// preset_command: `morvalis preset`, settings files without a picture.

#pragma once

#include <string>

#include "hosts/effect_choices/effect_choices.h"

struct PresetShowOptions {
  std::string file;
  bool json = false;
};

struct PresetSaveOptions {
  std::string output;
  EffectOptions effect;
  bool withPictures = false;  // copies of them beside the file
};

// The presets that come with the program, one a line.
int runPresetList(bool json);

int runPresetShow(const PresetShowOptions& options);
int runPresetSave(const PresetSaveOptions& options);
