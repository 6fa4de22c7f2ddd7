// focus: which control the keyboard acts on: the way of the Tab key through all of them, and the
// mark around one that is no button (a button shows its own).

#pragma once

#include <cstdint>

#include "services/rectangle.h"

struct DialogState;

// Every control that the keyboard reaches, in the order of the Tab key.
constexpr int32_t kTabStops = 34;
extern const int32_t kTabOrder[kTabStops];

// The control with the focus, area or button, as the back end has told it with an event; from there
// one step forward or back, beginning anew at the end.
void moveFocusByTab(DialogState* dialog, int32_t focused, bool backwards);

// An area, or no control at all (0), gets the focus because the pointer has pressed it.
void focusArea(DialogState* dialog, int32_t id);

// The area with the focus is acted on by the keyboard now, whatever has given it the focus.
void keyboardActs(DialogState* dialog);

// A button has it now; the back end draws its mark.
void buttonHasFocus(DialogState* dialog, int32_t id);

// Where the mark of an area stands.
Rectangle focusMark(int32_t id);
void drawFocusMark(DialogState* dialog);
