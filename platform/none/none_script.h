// none_script: how tests script the back end without a screen: what its user answers, which files
// decode to what, what time it is; and what it was asked to show.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct SessionRecord;

struct ShownAlert {
  std::string name;
  std::string title;
  std::vector<std::string> texts;
  std::vector<int32_t> buttons;  // numbers, in order
};

struct ShownChooser {
  std::string title;
  std::string pattern;
  bool forSaving;
};

struct NoneScript {
  // Plays the user of the main dialog; the number that the dialog ends with.
  std::function<int32_t(SessionRecord* session)> mainDialog;
  std::vector<int32_t> alertAnswers;     // one after the other, then 1
  std::vector<std::string> chosenPaths;  // one after the other, then cancelled; "" cancels
  std::string cachedSettingsPath;        // "": there is none
  char separator = '\\';
  uint32_t seconds = 1;
};

struct NoneRecord {
  std::vector<ShownAlert> alerts;  // message boxes have the name ""
  std::vector<ShownChooser> choosers;
  int32_t mainDialogs = 0;
  int32_t aboutBoxes = 0;
};

// Forgets everything: script, records, files, remembered values.
void resetNone();

NoneScript& noneScript();
NoneRecord& noneRecord();

// Makes a path decode to these pixels (three bytes each, rows from the top).
void scriptBitmap(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb);

// What is remembered under a name; empty when nothing is.
std::string rememberedValue(const std::string& name);
