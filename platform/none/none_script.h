// none_script: how tests script the back end without a screen: what its user answers, which files
// decode to what, what time it is; and what it was asked to show.

#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/none/none_window.h"

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

struct ShownWindow {
  std::string name;
  std::string caption;
  int32_t width;  // client area
  int32_t height;
  void* owner;
};

struct ShownPopup {
  Point screenOrigin;
  int32_t width;
  int32_t height;
};

using NoneColor = std::array<uint8_t, 3>;

struct NoneScript {
  // Plays the user of a modal window; one that it leaves open is cancelled. Without a script a
  // window cannot be shown. A script under the window's resource name comes first.
  std::function<void(NoneWindow& window)> modalWindow;
  std::map<std::string, std::function<void(NoneWindow& window)>> modalWindows;
  bool refusesPopups = false;
  ScreenRoom room = {100, 0, 0, 0};  // what the system says of its screen

  std::vector<int32_t> alertAnswers;     // one after the other, then 1
  std::vector<std::string> chosenPaths;  // one after the other, then cancelled; "" cancels
  std::vector<std::optional<NoneColor>> chosenColors;  // one after the other, then cancelled
  std::string cachedSettingsPath;                      // "": there is none
  std::string ownPictures;                             // folder; "": there is none
  bool forgetsValues = false;                          // what is to be remembered is lost
  char separator = '\\';
  uint32_t seconds = 1;
  uint32_t milliseconds = 1;
};

struct NoneRecord {
  std::vector<ShownAlert> alerts;   // message boxes have the name ""
  std::vector<std::string> sheets;  // a line each for caption and rows
  std::vector<ShownChooser> choosers;
  std::vector<ShownWindow> windows;      // refused ones too
  std::vector<ShownPopup> popups;        // refused ones too
  std::vector<NoneColor> colorChoosers;  // the colour that each started from
  std::string clipboard;
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
