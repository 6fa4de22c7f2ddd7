// edit_command: `morvalis edit`, the dialog on a picture file.

#pragma once

#include <string>

#include "hosts/command_line/effect_choices.h"

struct EditOptions {
  std::string image;   // empty: the user is asked
  std::string output;  // empty: beside the picture
  std::string mask;    // empty: by alpha when there is an alpha channel
  EffectOptions effect;
  std::string seed;  // empty: the clock's
};

// Needs a program with windows. A failure shows in a window too where standard error is no
// terminal, as in a program started from a file manager.
int runEditCommand(const EditOptions& options);
