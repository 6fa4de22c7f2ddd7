// picture_menus: shape, texture and blend mode are chosen from pop-up columns of pictures.

#pragma once

#include <cstdint>

#include "platform/window.h"

struct DialogState;

constexpr int32_t kFirstMenuCommand = 2000;

// The picker's face: the picture of its current choice.
void drawPicker(DialogState* dialog, int32_t id);

// Opens a picker's pop-up for the button that has been pressed; releasing it over a row posts that
// row's command. Released where it was pressed and at once, it leaves the pop-up open for a click
// or the keyboard.
void openPicker(DialogState* dialog, int32_t id, Point screenPoint);

// The same without a button.
void openPickerByKey(DialogState* dialog, int32_t id);

// Name of a picker's choice, "*" for a value that is none.
const char* choiceName(int32_t picker, int32_t value);

// Posts the command of a picker's choice, as a row of its menu does.
void postChoice(DialogState* dialog, int32_t picker, int32_t value);

// Takes a row's value into the control value of its picker; the picker's id, 0 for no row.
int32_t choiceFromCommand(DialogState* dialog, int32_t command);
