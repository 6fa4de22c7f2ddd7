// effect_choices: which settings and pictures the options ask for, before anything is rendered.
// chooseEffect: a preset or the last settings, with --set, --environment and --texture on top.
// applyOptions: the same three on top of any other starting point.
// findPictures: the picture files of that choice, checked.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/effect_choices/bitmap_path.h"
#include "persistence/settings_items.h"
#include "settings/effect_settings.h"

struct EffectOptions {
  std::vector<std::string> assignments;
  std::string environment;  // empty: none
  std::string texture;      // empty: none
  std::string preset;       // empty: none
  std::string pictures;     // folder of the preset's pictures; empty: the usual one
  bool last = false;
  bool limit = false;  // values beyond their ranges are limited instead of refused
};

struct ChosenPicture {
  std::string path;  // empty: by name or none
  std::string name;  // in the preset, Windows character set; empty: none
};

struct ChosenEffect {
  EffectSettings settings;
  ChosenPicture pictures[kPictureNames];
  std::optional<uint32_t> seed;  // of the last run
};

ChosenEffect chooseEffect(const EffectOptions& options);

// Ends the command when an assignment is wrong, before a file is looked at.
void checkOptions(const EffectOptions& options);
void applyOptions(const EffectOptions& options, ChosenEffect* effect);

// The built-in environment is turned only where someone says so: presets that name none leave it.
bool assignsTurns(const EffectOptions& options);

// The pictures that the effect needs; without a path where it needs none. Ends the command when one
// is not to be had.
struct FoundPictures {
  BitmapPath pictures[kPictureNames];
};
FoundPictures findPictures(const EffectOptions& options, const ChosenEffect& effect);
