// dialog_mouse: press, move and release of the left button on what the dialog draws itself.

#pragma once

#include "services/rectangle.h"

struct DialogState;

void handlePress(DialogState* dialog, Point point);
void handleMove(DialogState* dialog, Point point);
void handleRelease(DialogState* dialog, Point point);

// The same as a click on a toggle, or on the texture sample.
void flipToggle(DialogState* dialog, int32_t id);
void chooseTextureFile(DialogState* dialog);
