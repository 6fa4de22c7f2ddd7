// windows_api: the system's declarations, the same way for every file of this back end. Texts are
// in the system's own character set, as they are in settings files.

#pragma once

#define WIN32_LEAN_AND_MEAN
// The system draws with a procedure of our rectangle's name, which nobody here calls.
#define Rectangle SystemRectangle
#include <windows.h>
#undef Rectangle

// The module, which carries the resources and owns the window classes.
HINSTANCE moduleInstance();
