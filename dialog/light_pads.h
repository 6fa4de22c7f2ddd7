// light_pads: the two pads on which the directions of the lights are dragged.

#pragma once

#include <cstdint>

struct DialogState;

void drawLightPad(DialogState* dialog, int32_t id);

// A mouse move while the pad holds the capture.
void dragLight(DialogState* dialog, int32_t id);
