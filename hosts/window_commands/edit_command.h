// edit_command: `morvalis edit`, the dialog on a picture file.

#pragma once

#include "hosts/window_commands/edit_options.h"

// Needs a program with windows. A failure shows in a window too where standard error is no
// terminal, as in a program started from a file manager.
int runEditCommand(const EditOptions& options);
