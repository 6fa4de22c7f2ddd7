// control_access: the dialog's controls for screen readers, as elements of one accessible object.
// The libraries behind that are looked up, so that systems without them still load the module.

#pragma once

#include "platform/windows/windows_api.h"

struct Window;

// The answer to the system's question for a window's accessible object.
INT_PTR answerReader(Window* window, WPARAM wParam, LPARAM lParam);

// The area, 0 for none, that has the keyboard now.
void tellFocus(Window* window, int id);

// Nobody reads the window any more.
void endReading(Window* window);
