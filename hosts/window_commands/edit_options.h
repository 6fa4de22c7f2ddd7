// edit_options: what `morvalis edit` is given.

#pragma once

#include <string>

#include "hosts/effect_runs/effect_choices.h"

struct EditOptions {
  std::string image;   // empty: the user is asked
  std::string output;  // empty: beside the picture
  std::string mask;    // empty: by alpha when there is an alpha channel
  EffectOptions effect;
  std::string seed;  // empty: the clock's
};
