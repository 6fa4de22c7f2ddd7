// alerts: how the module tells the user about a failure. The alerts are known by name; their
// titles, texts and buttons stand here, how they look is the back end's.

#pragma once

#include <cstdint>

constexpr char kNotEnoughMemoryAlert[] = "NOT_ENOUGH_MEMORY";
constexpr int32_t kPreviewUnavailableString = 16999;

// Shows an alert modally; the number of the button that closed it, -1 when it cannot be shown.
int32_t showAlert(const char* name);

// Shows a message box with a string of the string table.
void showStringAlert(int32_t number);
