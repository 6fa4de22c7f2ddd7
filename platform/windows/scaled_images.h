// scaled_images: at scales above 100 percent, what the system shows by itself from the resources.

#pragma once

#include "platform/windows/window/window_record.h"

// The hand cursors at the dialog's scale; null at 100 percent. The system's to free once the module
// goes.
HCURSOR scaledCursor(WORD number);

// An icon at a scale, whoever asks frees it; null when there is none.
HICON scaledIcon(WORD number, int32_t scale);

// Gives the pictures of a template what the core has drawn in their places.
void scalePictures(const Window* window);
