// The scripts of the dialog in the module's code under Wine: the same settings and, texts apart,
// the same pixels as here.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_scripts.h"
#include "tests/windows/wine_host.h"

class WindowsScripts : public ::testing::TestWithParam<int> {};

static std::vector<std::string> linesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

static void expectSame(const std::string& path) {
  SCOPED_TRACE(path);
  const std::vector<std::string> here = recordedLines();
  const std::vector<std::string> there = linesOf(path);
  ASSERT_EQ(there.size(), here.size());
  int32_t differences = 0;
  for (size_t i = 0; i < here.size() && differences < 10; ++i) {
    EXPECT_EQ(there[i], here[i]);
    differences += there[i] == here[i] ? 0 : 1;
  }
}

// What is the core's alone and takes long here: history, sizes of pictures, draws; and an alert
// that comes before the window, after which Wine gives OK the keyboard at times.
constexpr const char* kLeftOut[] = {"LongHistory", "UndoAndRedo",     "Cancelling",
                                    "Reopening",   "Randomizing",     "Sizes",
                                    "OpeningZoom", "LargePicture",    "LightPads",
                                    "WayOfTab",    "PartsOfPictures", "HostsWithoutPreview"};

// What the other kind of numbers or of calls could change.
constexpr const char* kIn32Bits[] = {
    "MenusByKey", "MenusThatStay", "EnterAndEscape", "TypedNumbers", "SlidersByKey", "ShownIsSaved",
    "Readings",   "RowNames",      "ToolTips",       "Environment",  "Colours",      "AboutBox150"};

// A window at every scale, menus and a box at some.
constexpr const char* kScaled[] = {"BelowTheMinimum", "AboutBox250", "PictureMenus175"};

template <size_t count>
static bool names(const char* const (&list)[count], const std::string& name) {
  return std::any_of(list, list + count,
                     [&](const char* each) { return name.rfind(each, 0) == 0; });
}

static bool isPlayed(int bits, const std::string& name, bool atPlainScale) {
  if (bits == 32) return names(kIn32Bits, name);
  return atPlainScale ? !names(kLeftOut, name) : names(kScaled, name);
}

// All in one program, as each start of one takes its time.
TEST_P(WindowsScripts, SameAsHere) {
  const std::string folder = wineFolder(GetParam(), "scripts");
  if (folder.empty()) return;
  if (!takeProgram(GetParam(), folder, "windows_scripts.exe")) {
    GTEST_SKIP() << "the scripts are not built (libgtest-dev has their test library)";
  }
  std::string filter = "--gtest_filter=";
  for (const DialogScript& script : dialogScripts()) {
    if (isPlayed(GetParam(), script.name, true)) filter += std::string("*/") + script.name + ":";
  }
  for (const ScaledScript& scaled : scaledScripts()) {
    if (isPlayed(GetParam(), nameOf(scaled), false)) filter += "*/" + nameOf(scaled) + ":";
  }
  runOwnProgram(GetParam(), folder, {"windows_scripts.exe", "recordings", filter});
  const std::string recordings = folder + "/recordings/";
  for (const DialogScript& script : dialogScripts()) {
    if (!isPlayed(GetParam(), script.name, true)) continue;
    runScript(script);
    expectSame(recordings + script.name);
  }
  for (const ScaledScript& scaled : scaledScripts()) {
    if (!isPlayed(GetParam(), nameOf(scaled), false)) continue;
    runScript(scaled);
    expectSame(recordings + nameOf(scaled));
  }
}

INSTANTIATE_TEST_SUITE_P(Bits, WindowsScripts, ::testing::Values(64, 32), kindName);
