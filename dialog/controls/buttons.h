// buttons: the owner-drawn buttons, each in the state that the back end tells.

#pragma once

#include <cstdint>

#include "dialog/controls/canvas.h"
#include "settings/effect_settings.h"

struct DialogState;

void drawTextButton(DialogState* dialog, int32_t id, const char* text, const ItemState& state);
void drawPictureButton(DialogState* dialog, int32_t id, const ItemState& state);
void drawColourButton(DialogState* dialog, int32_t id, const Color16& colour,
                      const ItemState& state);
void drawZoomPercentage(DialogState* dialog, const ItemState& state);

// Frame and face alone.
void drawButtonFrame(Canvas* canvas, const Rectangle& rect, const ItemState& state);
