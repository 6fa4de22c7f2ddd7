// What the module gives to the system around it: words for screen readers, names in any script, and
// everything that it has taken.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "dialog/controls/control_table.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/bitmap_files.h"
#include "tests/windows/dialog_actions.h"
#include "tests/windows/wine_host.h"

class WindowsSystem : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    folder_ = wineFolder(GetParam(), "system");
    if (folder_.empty()) return;
    writePicture(folder_ + "/picture.ppm", testPicture(400, 320, 3));
  }

  std::string play(const DialogActions& actions, const std::vector<std::string>& more = {},
                   int expectedCode = 0) {
    writeText(folder_ + "/script.txt", scriptOf(actions));
    std::vector<std::string> words = {"--picture",  "picture.ppm",       "--forget",    "--dialog",
                                      "script.txt", "--settings-output", "settings.q9q"};
    words.insert(words.end(), more.begin(), more.end());
    return runWindowsHost(GetParam(), folder_, words, expectedCode);
  }

  std::vector<std::string> linesOf(const std::string& file) {
    const std::vector<uint8_t> bytes = readBytes(folder_ + "/" + file);
    std::istringstream text(std::string(bytes.begin(), bytes.end()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  std::string folder_;
};

static std::string find(const std::vector<std::string>& lines, const std::string& name) {
  for (const std::string& line : lines) {
    if (line.find("|" + name + "|") != std::string::npos) return line;
  }
  return "";
}

// Numbers of the system: roles 43 button, 44 box, 46 list, 49 dial, 51 slider, 40 picture, 18
// dialog; states 16 checked, 4 focused, 1 unavailable, on top of what can be reached.
TEST_P(WindowsSystem, ReadsControlsOut) {
  if (folder_.empty()) return;
  writeColourBitmap(folder_ + "/grain.bmp", 32, 16, std::vector<uint8_t>(32 * 16 * 3, 90));
  const char* const textureName = controlName(kTextureSample);
  DialogActions actions = {{"readings", {}, "first.txt"},
                           {"setreading", {81}, "Gloss"},
                           {"setreading", {9}, "Shape"},
                           {"setreading", {150}, "Radius"},
                           {"usereading", {}, "Grey caustic"},
                           {"usereading", {}, "Spin"},
                           // Whoever asks does not wait for the chooser's end.
                           {"usereading", {}, textureName},
                           {"file", {}, "grain.bmp"},
                           {"key", {0x09}, ""},
                           {"readings", {}, "second.txt"},
                           {"button", {kOkButton}, ""}};
  play(actions);
  const std::vector<std::string> first = linesOf("first.txt");
  size_t named = 0;
  for (int32_t i = 0; i < kMainDialog.controlCount; ++i) {
    const char* name = kMainDialog.controls[i].name;
    if (name == nullptr) continue;
    ++named;
    const std::string line = find(first, name);
    EXPECT_FALSE(line.empty()) << name;
    EXPECT_NE(line[0], '0') << line;
  }
  ASSERT_EQ(first.size(), 1 + named);
  EXPECT_EQ(first[0].rfind("18|Morvalis||", 0), 0U) << first[0];
  EXPECT_EQ(find(first, "Gloss"), "51|Gloss|50|1048576|0 to 100: strength of the highlights");
  EXPECT_EQ(find(first, "Shape").rfind("46|Shape|round|", 0), 0U);
  EXPECT_EQ(find(first, "Grey caustic").rfind("44|Grey caustic|off|1048576|", 0), 0U);
  EXPECT_EQ(find(first, "Light 1").rfind("49|Light 1|135 degrees, ", 0), 0U);
  EXPECT_EQ(find(first, "Preview").rfind("40|Preview|50%|", 0), 0U);
  EXPECT_EQ(find(first, "Zoom out").rfind("43|Zoom out||1048577|", 0), 0U);
  const std::vector<std::string> second = linesOf("second.txt");
  EXPECT_EQ(find(second, "Gloss").rfind("51|Gloss|81|", 0), 0U);
  EXPECT_EQ(find(second, "Radius").rfind("51|Radius|150|", 0), 0U);
  EXPECT_EQ(find(second, "Shape").rfind("46|Shape|collar|", 0), 0U) << find(second, "Shape");
  EXPECT_EQ(find(second, "Grey caustic").rfind("44|Grey caustic|on|1048592|", 0), 0U);
  EXPECT_EQ(find(second, "Texture").rfind("46|Texture|file|", 0), 0U) << find(second, "Texture");
  EXPECT_EQ(find(second, "Spin").rfind("43|Spin|quarter turns: 1|", 0), 0U);
}

// Neither these folders nor the files have a name in the system's character set.
TEST_P(WindowsSystem, TakesNamesOfAnyScript) {
  if (folder_.empty()) return;
  const std::string place = "\u0141ukasz \u017c\u00f3\u0142w";
  std::filesystem::create_directory(folder_ + "/" + place);
  std::vector<uint8_t> rgb(64 * 64 * 3, 90);
  writeColourBitmap(folder_ + "/" + place + "/\u0142\u0105ka.bmp", 64, 64, rgb);
  DialogActions actions;
  pressForFile(&actions, kEnvironmentButton, place + "\\\u0142\u0105ka.bmp");
  actions.push_back({"setreading", {81}, "Gloss"});
  pressForFile(&actions, kSaveButton, place + "\\\u015bwit.q9q");
  actions.push_back({"setreading", {7}, "Gloss"});
  pressForFile(&actions, kLoadButton, place + "\\\u015bwit.q9q");
  actions.push_back({"readings", {}, "loaded.txt"});
  actions.push_back({"button", {kOkButton}, ""});
  play(actions, {"--kept-values", "values.txt"});
  EXPECT_GT(std::filesystem::file_size(folder_ + "/" + place + "/\u015bwit.q9q"), 100U);
  const std::vector<std::string> loaded = linesOf("loaded.txt");
  EXPECT_EQ(find(loaded, "Gloss").rfind("51|Gloss|81|", 0), 0U);
  EXPECT_EQ(find(loaded, "Reflection").rfind("51|Reflection|100|", 0), 0U)
      << "the picture has been taken";
}

// A file that had to be made to have a name goes again when nothing can be written into it; one
// that was there stays.
TEST_P(WindowsSystem, LeavesNothingOfAFailedSave) {
  if (folder_.empty()) return;
  const std::string there = folder_ + "/\u0142\u0105ka.q9q";
  writeText(there, "something");
  DialogActions actions;
  for (const char* file : {"\u015bwit.q9q", "plain.q9q", "\u0142\u0105ka.q9q"}) {
    pressForFile(&actions, kSaveButton, file);
    actions.push_back({"answer", {1}, ""});
  }
  actions.push_back({"button", {kCancelButton}, ""});
  play(actions, {"--full-disk"}, 1);
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/\u015bwit.q9q"));
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/plain.q9q"));
  EXPECT_TRUE(std::filesystem::exists(there));
}

// In 64 bits alone, as nothing here goes by the kind of numbers or of calls.
class WindowsPictures : public WindowsSystem {};

// Where a preset's picture is looked for, Escape and the window's own button mean Cancel, which has
// the keyboard; the other button would open a chooser of files.
TEST_P(WindowsPictures, SearchForThemEndsWithCancel) {
  if (folder_.empty()) return;
  const std::string picture = folder_ + "/sky.bmp";
  writeColourBitmap(picture, 64, 64, std::vector<uint8_t>(64 * 64 * 3, 90));
  DialogActions saving;
  pressForFile(&saving, kEnvironmentButton, "sky.bmp");
  pressForFile(&saving, kSaveButton, "named.q9q");
  saving.push_back({"button", {kCancelButton}, ""});
  play(saving, {}, 1);
  std::filesystem::remove(picture);
  constexpr int32_t kCancel = 1;
  DialogActions loading;
  for (const DialogAction& end :
       {DialogAction{"boxkey", {0x1B}, ""}, {"boxclose", {}, ""}, {"boxkey", {0x0D}, ""}}) {
    pressForFile(&loading, kLoadButton, "named.q9q");
    loading.push_back({"boxfocus", {kCancel}, ""});
    loading.push_back(end);
  }
  loading.push_back({"readings", {}, "read.txt"});
  loading.push_back({"button", {kOkButton}, ""});
  play(loading);
  const std::string environment = find(linesOf("read.txt"), "Environment picture");
  EXPECT_EQ(environment.rfind("43|Environment picture|built in|", 0), 0U) << environment;
}

// Nothing is asked when a picture stands beside its preset, in the folder of pictures beside or
// above it, or in the one that comes with the module.
TEST_P(WindowsPictures, AreFoundByThemselves) {
  if (folder_.empty()) return;
  struct Place {
    const char* preset;
    const char* picture;
  };
  constexpr Place kPlaces[] = {{"beside", "beside"},
                               {"under", "under/environments and textures"},
                               {"made/presets", "made/environments and textures"},
                               {"alone", "environments and textures"}};
  DialogActions saving;
  DialogActions loading;
  for (const Place& place : kPlaces) {
    const std::string name = std::string(place.preset, 4) + ".bmp";
    std::filesystem::create_directories(folder_ + "/" + place.preset);
    writeColourBitmap(folder_ + "/" + name, 64, 64, std::vector<uint8_t>(64 * 64 * 3, 90));
    std::string preset = std::string(place.preset) + "\\named.q9q";
    std::replace(preset.begin(), preset.end(), '/', '\\');
    pressForFile(&saving, kEnvironmentButton, name);
    pressForFile(&saving, kSaveButton, preset);
    pressForFile(&loading, kLoadButton, preset);
    loading.push_back({"readings", {}, "read-" + name});
  }
  saving.push_back({"button", {kCancelButton}, ""});
  loading.push_back({"button", {kCancelButton}, ""});
  play(saving, {}, 1);
  for (const Place& place : kPlaces) {
    const std::string name = std::string(place.preset, 4) + ".bmp";
    std::filesystem::create_directories(folder_ + "/" + place.picture);
    std::filesystem::rename(folder_ + "/" + name, folder_ + "/" + place.picture + "/" + name);
  }
  play(loading, {}, 1);
  for (const Place& place : kPlaces) {
    const std::string name = std::string(place.preset, 4) + ".bmp";
    const std::string environment = find(linesOf("read-" + name), "Environment picture");
    EXPECT_EQ(environment.rfind("43|Environment picture|" + name + "|", 0), 0U) << environment;
  }
}

TEST_P(WindowsSystem, GivesBackWhatItTook) {
  if (folder_.empty()) return;
  const std::string printed = runWindowsHost(GetParam(), folder_, {"--loads", "8"});
  EXPECT_LT(std::stoi(printed), 1024) << "bytes a load: " << printed;

  const DialogActions confirm = {{"readings", {}, "read.txt"}, {"button", {kOkButton}, ""}};
  writeText(folder_ + "/again.txt", scriptOf(confirm));
  play(confirm, {"--again", "again.txt", "--bitmaps", "bitmaps.txt"});
  const std::vector<std::string> counts = linesOf("bitmaps.txt");
  ASSERT_EQ(counts.size(), 2U);
  EXPECT_EQ(counts[0], counts[1]);
}

INSTANTIATE_TEST_SUITE_P(Bits, WindowsPictures, ::testing::Values(64), kindName);
INSTANTIATE_TEST_SUITE_P(Bits, WindowsSystem, ::testing::Values(64, 32), kindName);
