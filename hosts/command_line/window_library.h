// window_library: the commands that open windows, from the library that has them.

#pragma once

#include <functional>

#include "hosts/window_commands/edit_options.h"

// Each ends the command when the library, or what it needs, is not installed. argv: the program's
// own.
int openAbout(char** argv);
int openEdit(const EditOptions& options, char** argv);

// Runs a command and shows what it has said on standard error, where it says it too, in a window
// when it fails.
int runTellingInWindow(const std::function<int()>& command, char** argv);
