// dialog_extras: what people expect beyond the pointer: wheel, keys, typed numbers, double-click,
// undo, a look at the untouched picture, and the settings as a command line.

#pragma once

#include "platform/window.h"

struct DialogState;

// True when the event was made use of.
bool handleExtra(DialogState* dialog, const WindowEvent& event);
