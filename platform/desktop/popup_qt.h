// popup_qt: the pop-up that a window has opened.

#pragma once

#include "platform/window.h"

constexpr int32_t kPopupFrame = 3;  // lines around the rows

// Both sides of the frame, and what it leaves free beside the rows and below them, pixels at 100
// percent.
constexpr int32_t kPopupRoomAcross = 10;
constexpr int32_t kPopupRoomDown = 8;

// Lets an open pop-up go outside its rows, so that whoever opened it frees what it holds.
void dismissPopup(Window* owner);
