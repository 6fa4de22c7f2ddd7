// edit_options: what `morvalis edit` is given.

#pragma once

#include <string>

#include "hosts/effect_choices/effect_choices.h"
#include "hosts/effect_runs/selection.h"

struct EditOptions {
  std::string image;   // empty: the user is asked
  std::string output;  // empty: beside the picture; with {name}, {folder}
  bool keep = false;   // a result takes a name that is free
  MaskOptions mask;
  EffectOptions effect;
  std::string frame;   // of several pictures in one file; empty: the first
  bool color = false;  // a grey picture becomes one of colours
  std::string seed;    // empty: the clock's
};
