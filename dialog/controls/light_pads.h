// light_pads: the two pads on which the directions of the lights are dragged.

#pragma once

#include <cstdint>

struct DialogState;

void drawLightPad(DialogState* dialog, int32_t id);

// A mouse move while the pad holds the capture.
void dragLight(DialogState* dialog, int32_t id);

// Turns the handle to where its reading is this many degrees; as far from the middle as it was.
constexpr double kDegreesPerRadian = 57.29577951308232;
void turnLight(DialogState* dialog, int32_t id, int32_t degrees);

// Moves the handle by pixels to the right and down, or, with `end`, as far as it goes that way.
void stepLight(DialogState* dialog, int32_t id, int32_t right, int32_t down, bool end);
