// text_alerts: alerts and messages as lines on standard error, where there are no windows.

#pragma once

#include "platform/alerts.h"

constexpr int32_t kAlertCancelButton = 1;  // the number of every alert's Cancel

// Whoever shows an alert or a message, in whatever way, counts it.
void countAlert();

void printMessage(const char* caption, const char* text);
void printAlert(const AlertContent& content);
