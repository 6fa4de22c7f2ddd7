// alerts: what a back end supplies to show one of the module's alerts.

#pragma once

#include <cstdint>

// A button of an alert; its number is the alert's answer when it is pressed.
struct AlertButton {
  int32_t number;
  const char* text;
};

struct AlertContent {
  const char* name;  // resource name
  const char* title;
  const char* text;
  const AlertButton* buttons;  // the last one is the default
  int32_t buttonCount;
};

// Shows the alert modally; the number of the button that closed it, -1 when it cannot be shown.
int32_t showPlatformAlert(const AlertContent& content);

// Shows a message box with the stop icon and returns when it is closed.
void showPlatformMessage(const char* caption, const char* text);
