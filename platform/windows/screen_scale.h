// screen_scale: how large the system shows windows. What asks for it is younger than the oldest
// systems that load the module, so that it is looked up when it is needed.

#pragma once

#include "platform/windows/windows_api.h"

constexpr int kPlainDots = 96;  // an inch, at 100 percent

// Dots an inch at which the system's own measures (fonts of dialogs, GetSystemMetrics) are.
int systemDots();

// Keeps the system from laying a dialog out anew when it comes to a screen of another scale.
void keepLayout(HWND dialog);
