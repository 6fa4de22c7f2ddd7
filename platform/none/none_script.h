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
  std::string text;
};

struct NoneScript {
  // Plays the user of the main dialog; the number that the dialog ends with.
  std::function<int32_t(SessionRecord* session)> mainDialog;
  int32_t alertAnswer = 1;
  uint32_t seconds = 1;
};

struct NoneRecord {
  std::vector<ShownAlert> alerts;  // message boxes have the name ""
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
