// dialog_scale: the scale of the window that is open. Tables and numbers give places and lengths at
// 100 percent; what is drawn and where the pointer is are pixels of the screen.

#pragma once

#include <cstdint>

#include "platform/window.h"
#include "services/scaling.h"

// Client area of the main dialog, at 100 percent.
constexpr int32_t kDialogWidth = 680;
constexpr int32_t kDialogHeight = 370;

// One window of the core is open at a time, so that its scale stands here; 100 percent at first.
int32_t dialogScale();
void setDialogScale(int32_t scale);

// A length, the width of a line, and a rectangle in pixels.
int32_t scaled(int32_t length);
int32_t pen();
Rectangle scaled(const Rectangle& rect);

// What MORVALIS_SCALE says; 0 for anything that is no scale.
int32_t wantedScale();

// The one of the scales that is nearest to a percentage.
int32_t nearestScale(int32_t wanted);

// The scale for a window of this size at 100 percent: what MORVALIS_SCALE asks for, else what the
// system shows the owner's neighbours at, made smaller until the screen has room, also for a menu
// without a frame.
int32_t chooseScale(void* ownerWindow, int32_t width, int32_t height, int32_t tallestMenu = 0);

// A template at the open window's scale; `controls` has room for its rows.
WindowTemplate scaledTemplate(const WindowTemplate& content, WindowControl* controls);
