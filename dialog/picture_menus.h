// picture_menus: shape, texture and blend mode are chosen from pop-up columns of pictures.

#pragma once

#include <cstdint>

#include "platform/window.h"

struct DialogState;

constexpr int32_t kFirstMenuCommand = 2000;

// The picker's face: the picture of its current choice.
void drawPicker(DialogState* dialog, int32_t id);

// Opens a picker's pop-up; releasing the button over a row posts that row's command.
void openPicker(DialogState* dialog, int32_t id, Point screenPoint);

// Takes a row's value into the control value of its picker; the picker's id, 0 for no row.
int32_t choiceFromCommand(DialogState* dialog, int32_t command);

// Name of a blend mode, "*" for a value that is none.
const char* blendModeName(int32_t value);
