#include "services/alerts.h"

#include <cstring>

#include "platform/alerts.h"

constexpr AlertButton kNotEnoughMemoryButtons[] = {{1, "Cancel"}};

constexpr AlertContent kAlerts[] = {
    {kNotEnoughMemoryAlert, "Not Enough Memory",
     "The filter cannot run because it can't get enough RAM (memory). "
     "Try re-selecting the image.",
     kNotEnoughMemoryButtons, 1},
};

constexpr char kMessageCaption[] = "Morvalis";

struct StringRow {
  int32_t number;
  const char* text;
};

constexpr StringRow kStrings[] = {
    {kPreviewUnavailableString, "This program cannot show a preview of the effect."},
};

int32_t showAlert(const char* name) {
  for (const AlertContent& alert : kAlerts) {
    if (std::strcmp(alert.name, name) == 0) return showPlatformAlert(alert);
  }
  return -1;
}

void showStringAlert(int32_t number) {
  for (const StringRow& row : kStrings) {
    if (row.number == number) showPlatformMessage(kMessageCaption, row.text);
  }
}
