// desktop_session: how a program with windows shows itself on the desktop.

#pragma once

#include <cstdint>

// The windows of this program belong to the desktop file of this name and show its icon; the
// module's own where it is not installed. Needs the application object.
void introduceProgram(const char* name);

// From here on the dialogs belong to a window of another program, by the number that the system
// knows it by: they stay above it. 0: they stand alone, as at first.
void belongToWindow(uint64_t number);
