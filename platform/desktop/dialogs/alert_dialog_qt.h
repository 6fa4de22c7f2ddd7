// alert_dialog_qt: an alert as a window, laid out in dialog units.

#pragma once

#include <cstdint>

struct AlertContent;

// Runs the alert modally; the number of the button that closed it, kAlertClosed when its window was
// closed instead.
constexpr int32_t kAlertClosed = -1;
int32_t runAlertDialog(const AlertContent& content);
