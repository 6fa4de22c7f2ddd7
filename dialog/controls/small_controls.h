// small_controls: labels, value fields, sliders and the two toggles.

#pragma once

#include <cstdint>

struct DialogState;
struct Slider;

void drawLabel(DialogState* dialog, int32_t id);
void drawValue(DialogState* dialog, int32_t id);  // a slider's or its value area's id

// The number that a slider's field shows.
int32_t shownValue(const Slider& slider, int32_t value);

// The slider's value that its field shows as this number.
int32_t valueFromShown(const Slider& slider, int32_t shown);

void drawSlider(DialogState* dialog, int32_t id);

// A mouse move while the slider holds the capture: value, slider and value area follow the pointer.
void dragSlider(DialogState* dialog, int32_t id);

// state: 0 off, 1 on, 2 off and pressed, 3 on and pressed.
void drawToggle(DialogState* dialog, int32_t id, int32_t state);

// A mouse move while the toggle holds the capture.
void trackToggle(DialogState* dialog, int32_t id, int32_t currentValue);

// True when the pointer has not moved since the last event that was acted on.
bool pointerStands(DialogState* dialog);
void pointerHandled(DialogState* dialog);
