// alerts: what a back end supplies to show one of the module's alerts.

#pragma once

#include <cstdint>

// A place in a dialog, in dialog units: quarters of the font's average width, eighths of its
// height.
struct DialogPlace {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
};

struct AlertText {
  int32_t number;  // 99 to 101 carry parameters, 0 has none; the text below is already expanded
  DialogPlace place;
  const char* text;
};

// A button of an alert; its number is the alert's answer when it is pressed.
struct AlertButton {
  int32_t number;
  DialogPlace place;
  const char* text;
  bool isDefault;
};

struct AlertContent {
  const char* name;  // resource name
  const char* title;
  int32_t width;  // of the frame, dialog units
  int32_t height;
  DialogPlace icon;
  AlertText texts[2];
  int32_t textCount;
  AlertButton buttons[2];
  int32_t buttonCount;
};

// Shows the alert modally; the number of the button that closed it, -1 when it cannot be shown.
// Enter and Escape are its Cancel at first, as is closing its window.
int32_t showPlatformAlert(const AlertContent& content);

// Shows a message box with the stop icon and returns when it is closed.
void showPlatformMessage(const char* caption, const char* text);

// Shows rows of two columns on a sheet, above the window that is open, until the user closes it.
struct SheetRow {
  const char* term;
  const char* meaning;
};
void showPlatformSheet(const char* caption, const SheetRow* rows, int32_t count);
