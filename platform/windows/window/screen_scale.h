// screen_scale: how large the system shows windows. What asks for it is younger than the oldest
// systems that load the module, so that it is looked up when it is needed.

#pragma once

#include "platform/windows/windows_api.h"

constexpr int kPlainDots = 96;  // an inch, at 100 percent

// Dots an inch at which the system's own measures (fonts of dialogs, GetSystemMetrics) are.
int systemDots();

// The scale that a window is at; null: the system's. And a measure of the system's at a scale,
// which older systems have at one alone.
int dotsOf(HWND window);
int metricAt(int metric, int dots);

// The screen that a window is on, or most of it; null: the first one.
MONITORINFO monitorOf(HWND window);

// Keeps the system from laying a dialog out anew when it comes to a screen of another scale.
void keepLayout(HWND dialog);
