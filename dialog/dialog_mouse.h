// dialog_mouse: press, move and release of the left button on what the dialog draws itself.

#pragma once

#include "services/rectangle.h"

struct DialogState;

void handlePress(DialogState* dialog, Point point);
void handleMove(DialogState* dialog, Point point);
void handleRelease(DialogState* dialog, Point point);

// What the Space key does with an area; false when that is nothing.
bool useArea(DialogState* dialog, int32_t id);
