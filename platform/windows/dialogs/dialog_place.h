// dialog_place: where a dialog of this back end stands.

#pragma once

#include "platform/windows/windows_api.h"

// Moves a dialog of known size over its parent, or over the desktop when it has none.
void placeDialog(HWND dialog);
