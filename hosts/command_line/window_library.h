// window_library: the commands that open windows, from the library that has them.

#pragma once

#include "hosts/window_commands/edit_options.h"

// Each ends the command when the library, or what it needs, is not installed. argv: the program's
// own.
int openAbout(char** argv);
int openEdit(const EditOptions& options, char** argv);
