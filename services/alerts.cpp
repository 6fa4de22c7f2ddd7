#include "services/alerts.h"

#include <cstdio>
#include <cstring>

#include "platform/alerts.h"

constexpr int32_t kParameters = 4;
constexpr int32_t kParameterBytes = 256;
constexpr int32_t kLongestAlertText = kAlertTextBytes - 1;

static char alertParameters[kParameters][kParameterBytes];

constexpr AlertContent kAlerts[] = {
    {kNotEnoughMemoryAlert,
     "Not Enough Memory",
     176,
     97,
     {11, 17, 21, 20},
     {{0,
       {57, 17, 106, 43},
       "The filter cannot run because it can't get enough RAM (memory). "
       "Try re-selecting the image."}},
     1,
     {{1, {118, 76, 50, 14}, "Cancel", true}},
     1},
    {kFileNotFoundAlert,
     "Can't open file",
     271,
     135,
     {11, 10, 20, 20},
     {{99, {47, 10, 222, 32}, "Can't open the ^0 file \"^1\"."},
      {100,
       {47, 49, 223, 51},
       "Try putting this file in your \"environments and textures\" folder.\n\n"
       "Or, help Morvalis find the \"environments and textures\" folder."}},
     2,
     {{kFindFolder, {123, 108, 50, 14}, "Find folder...", false},
      {1, {196, 108, 50, 14}, "Cancel", true}},
     2},
};

constexpr char kMessageCaption[] = "Morvalis";

struct StringRow {
  int32_t number;
  const char* text;
};

constexpr StringRow kStrings[] = {
    {kPreviewUnavailableString, "This program cannot show a preview of the effect."},
    {kCannotOpenString, "\"^0\" cannot be opened. Nothing has been changed."},
    {kNotSettingsString, "\"^0\" is not a settings file. Nothing has been changed."},
    {kDamagedSettingsString, "\"^0\" is damaged or cut off. Nothing has been changed."},
    {kLimitedSettingsString,
     "\"^0\" has values that are out of range. Each has been taken as the nearest there is."},
    {kCannotSaveString, "\"^0\" cannot be saved."},
    {kNotPictureString,
     "\"^0\" is not a Windows bitmap that can be opened. Nothing has been changed."},
    {kPathTooLongString, "The path of that file is too long."},
    {kNameUnusableString,
     "The name of that file or of its folder has characters that cannot be used here."},
};

void setAlertParameters(const char* p0, const char* p1, const char* p2, const char* p3) {
  const char* const texts[kParameters] = {p0, p1, p2, p3};
  for (int32_t i = 0; i < kParameters; ++i) {
    std::snprintf(alertParameters[i], kParameterBytes, "%s", texts[i] == nullptr ? "" : texts[i]);
  }
}

// Puts `inserted` in place of the two characters at `at`.
static void replaceMarker(char* text, int32_t at, const char* inserted) {
  char rest[kAlertTextBytes];
  std::snprintf(rest, sizeof(rest), "%s", text + at + 2);
  std::snprintf(text + at, static_cast<size_t>(kAlertTextBytes - at), "%s%s", inserted, rest);
}

void expandAlertText(char* text) {
  text[kLongestAlertText] = 0;
  bool caret = false;
  int32_t i = 0;
  while (text[i] != 0) {
    const char c = text[i];
    const bool marker = caret && c >= '0' && c < '0' + kParameters;
    caret = c == '^';
    if (marker && alertParameters[c - '0'][0] != 0) {
      // The walk goes on at the inserted text's second character, which stands where the digit did.
      replaceMarker(text, i - 1, alertParameters[c - '0']);
    } else {
      ++i;
    }
  }
}

int32_t showAlert(const char* name) {
  for (const AlertContent& alert : kAlerts) {
    if (std::strcmp(alert.name, name) != 0) continue;
    AlertContent expanded = alert;
    char texts[2][kAlertTextBytes];
    for (int32_t i = 0; i < expanded.textCount; ++i) {
      AlertText* item = &expanded.texts[i];
      if (item->number == 0) continue;
      std::snprintf(texts[i], sizeof(texts[i]), "%s", item->text);
      expandAlertText(texts[i]);
      item->text = texts[i];
    }
    return showPlatformAlert(expanded);
  }
  return -1;
}

void showStringAlert(int32_t number) {
  for (const StringRow& row : kStrings) {
    if (row.number != number) continue;
    char text[kAlertTextBytes];
    std::snprintf(text, sizeof(text), "%s", row.text);
    expandAlertText(text);
    showPlatformMessage(kMessageCaption, text);
  }
}

void showFileAlert(int32_t number, const char* name) {
  setAlertParameters(name, "", "", "");
  showStringAlert(number);
}
