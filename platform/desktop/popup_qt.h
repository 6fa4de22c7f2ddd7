// popup_qt: the pop-up that a window has opened.

#pragma once

#include "platform/window.h"

constexpr int32_t kPopupFrame = 3;  // pixels around the rows

// Lets an open pop-up go outside its rows, so that whoever opened it frees what it holds.
void dismissPopup(Window* owner);
