// The dialog on both kinds of Windows: the same actions give the same settings, the same picture
// and, text apart, the same window as here.

#include <gtest/gtest.h>

#include <filesystem>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "hosts/substitute_host/host_record.h"
#include "persistence/settings_codec.h"
#include "platform/none/none_script.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/bitmap_files.h"
#include "tests/support/random_inputs.h"
#include "tests/windows/dialog_actions.h"
#include "tests/windows/wine_host.h"

constexpr int32_t kWidth = 620;
constexpr int32_t kHeight = 200;
constexpr uint32_t kSeconds = 4711;
constexpr char kEnvironment[] = "elsewhere\\environment.bmp";

// Virtual codes.
constexpr int32_t kTabKey = 0x09;
constexpr int32_t kEnterKey = 0x0D;
constexpr int32_t kEscapeKey = 0x1B;
constexpr int32_t kUpKey = 0x26;
constexpr int32_t kRightKey = 0x27;

class WindowsDialog : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    folder_ = wineFolder(GetParam(), "dialog");
    if (folder_.empty()) return;
    picture_ = testPicture(kWidth, kHeight, 3);
    mask_ = testMask(kWidth, kHeight);
    writePicture(folder_ + "/picture.ppm", picture_);
    writePicture(folder_ + "/mask.pgm", {kWidth, kHeight, 1, mask_});
    TestRandom random = {99};
    for (uint8_t& value : environment_)
      value = static_cast<uint8_t>(randomBetween(&random, 0, 255));
    std::filesystem::create_directory(folder_ + "/elsewhere");
    writeColourBitmap(folder_ + "/elsewhere/environment.bmp", 64, 64, environment_);
    resetDialogUser();
    noneScript().seconds = kSeconds;
    scriptBitmap(folder_ + "/elsewhere/environment.bmp", 64, 64, environment_);
  }

  void TearDown() override {
    closeHost();
  }

  // Plays on Windows; the module's kept values are forgotten before unless `more` says otherwise.
  void playThere(const DialogActions& actions, const std::vector<std::string>& more,
                 int expectedCode = 0) {
    writeText(folder_ + "/script.txt", scriptOf(actions));
    std::vector<std::string> words = {"--picture",
                                      "picture.ppm",
                                      "--mask",
                                      "mask.pgm",
                                      "--seed",
                                      std::to_string(kSeconds),
                                      "--dialog",
                                      "script.txt",
                                      "--output",
                                      "output.ppm",
                                      "--settings-output",
                                      "settings.q9q"};
    words.insert(words.end(), more.begin(), more.end());
    runWindowsHost(GetParam(), folder_, words, expectedCode);
  }

  int16_t playHere(const DialogActions& actions, const HostSwitches& switches = displayingHost(),
                   const std::function<void()>& prepare = nullptr) {
    return runDialog(switches, picture_, mask_, playOf(actions, folder_, &shots_), prepare);
  }

  void expectSameSettings() {
    std::vector<uint8_t> here(kLongestEncodedSettings);
    here.resize(encodeSettings(hostSettings(), here.data()));
    const std::vector<uint8_t> there = readBytes(folder_ + "/settings.q9q");
    ASSERT_EQ(there.size(), here.size());
    for (size_t i = 0; i < here.size(); ++i) EXPECT_EQ(there[i], here[i]) << "byte " << i;
  }

  void expectSameWindow(const std::string& shot);
  void expectSameMenu(const std::string& shot);

  std::vector<uint8_t> outputThere() {
    return readSamples(folder_ + "/output.ppm", filteredPicture().samples.size());
  }

  std::string readText(const std::string& file) {
    const std::vector<uint8_t> bytes = readBytes(folder_ + "/" + file);
    return std::string(bytes.begin(), bytes.end());
  }

  std::string folder_;
  HostPicture picture_;
  HostMask mask_;
  std::vector<uint8_t> environment_ = std::vector<uint8_t>(64 * 64 * 3);
  DialogShots shots_;
};

static bool holdsText(Point point) {
  const auto inside = [point](int32_t id) {
    Rectangle rect = controlRect(id);
    rect.left = static_cast<int16_t>(rect.left - scaled(2));  // letters may stand out a little
    return pointInRect(point, &rect);
  };
  for (int32_t i = 0; i < kLabelCount; ++i) {
    if (inside(kLabels[i].id)) return true;
  }
  for (const Slider& slider : kSliders) {
    if (inside(slider.valueArea)) return true;
  }
  for (int32_t id : {kCancelButton, kOkButton, kZoomInButton, kZoomOutButton, kZoomButton}) {
    if (inside(id)) return true;
  }
  return false;
}

void WindowsDialog::expectSameWindow(const std::string& shot) {
  const HostPicture there = readShot(folder_ + "/" + shot);
  const WindowPicture& here = shots_[shot];
  ASSERT_EQ(there.width, here.width);
  ASSERT_EQ(there.height, here.height);
  int32_t different = 0;
  for (int32_t y = 0; y < here.height; ++y) {
    for (int32_t x = 0; x < here.width; ++x) {
      const size_t pixel =
          3 * (static_cast<size_t>(y) * static_cast<size_t>(here.width) + static_cast<size_t>(x));
      if (holdsText({static_cast<int16_t>(y), static_cast<int16_t>(x)}) ||
          std::equal(&here.rgb[pixel], &here.rgb[pixel] + 3, &there.samples[pixel])) {
        continue;
      }
      if (++different <= 3) ADD_FAILURE() << shot << ": another pixel at " << x << ", " << y;
    }
  }
  EXPECT_EQ(different, 0) << shot;
}

// Pictures and check marks; the names beside them widen the pop-up as the system's text needs.
void WindowsDialog::expectSameMenu(const std::string& shot) {
  const int32_t before = scaled(48);
  const HostPicture there = readShot(folder_ + "/" + shot);
  const WindowPicture& here = shots_[shot];
  // A frame inside the window leaves some ground below the rows.
  ASSERT_GE(there.height, here.height);
  ASSERT_GE(std::min(there.width, here.width), before);
  const auto row = [before](const auto& samples, int32_t width, int32_t y) {
    const auto first = samples.begin() + std::ptrdiff_t{3} * width * y;
    return std::vector<uint8_t>(first, first + std::ptrdiff_t{3} * before);
  };
  for (int32_t y = 0; y < here.height; ++y) {
    ASSERT_EQ(row(there.samples, there.width, y), row(here.rgb, here.width, y))
        << shot << ": " << y;
  }
}

static void pressKeys(DialogActions* actions, const std::vector<int32_t>& codes) {
  for (const int32_t code : codes) actions->push_back({"key", {code}, ""});
}

static DialogActions everyControl() {
  DialogActions actions;
  int32_t value = 7;
  for (const Slider& slider : kSliders) {
    const int32_t span = slider.maximum - slider.minimum;
    value = (value * 31 + 17) % 97;
    drag(&actions, sliderPoint(slider.id, slider.minimum + span / 3),
         sliderPoint(slider.id, slider.minimum + span * value / 97));
  }
  actions.push_back({"shot", {}, "sliders.bmp"});
  drag(&actions, sliderPoint(28, 40), sliderPoint(28, 40));
  pressKeys(&actions, {kRightKey, kRightKey, kUpKey, '4', '2', kEnterKey, kTabKey});
  actions.push_back({"shot", {}, "keys.bmp"});
  chooseInMenu(&actions, kShapePicker, 6, "menu-shape.bmp");
  chooseInMenu(&actions, kTexturePicker, 8, "menu-texture.bmp");
  chooseInMenu(&actions, kBlendPicker, 2, "menu-blend.bmp");
  drag(&actions, middleOf(kLight1Pad), at(130, 300));
  drag(&actions, middleOf(kLight2Pad), at(160, 350));
  drag(&actions, middleOf(kCausticToggle), middleOf(kCausticToggle));
  drag(&actions, middleOf(kAutoPreviewToggle), middleOf(kAutoPreviewToggle));
  drag(&actions, middleOf(kTextureSample), at(320, 70));
  actions.push_back({"shot", {}, "choices.bmp"});
  drag(&actions, middleOf(kAutoPreviewToggle), middleOf(kAutoPreviewToggle));
  for (int32_t button :
       {kZoomInButton, kZoomInButton, kSpinButton, kLight1Button, kTarnishButton}) {
    actions.push_back({"button", {button}, ""});
  }
  drag(&actions, middleOf(kPreviewArea), at(450, 120));
  actions.push_back({"shot", {}, "panned.bmp"});
  const Point preview = middleOf(kPreviewArea);
  actions.push_back({"otherpress", {preview.h, preview.v}, ""});
  actions.push_back({"shot", {}, "untouched.bmp"});
  actions.push_back({"otherrelease", {preview.h, preview.v}, ""});
  pressForFile(&actions, kEnvironmentButton, kEnvironment);
  pressForFile(&actions, kSaveButton, "saved.q9q");
  actions.push_back({"button", {kRandomizeButton}, ""});
  actions.push_back({"shot", {}, "random.bmp"});
  actions.push_back({"wheel", {sliderPoint(12, 50).h, sliderPoint(12, 50).v, 3}, ""});
  pressForFile(&actions, kSaveButton, "random.q9q");
  pressForFile(&actions, kLoadButton, "saved.q9q");
  actions.push_back({"answer", {1}, ""});  // its environment is not where the module looks
  actions.push_back({"double", {sliderPoint(28, 90).h, sliderPoint(28, 90).v}, ""});
  actions.push_back({"release", {sliderPoint(28, 90).h, sliderPoint(28, 90).v}, ""});
  actions.push_back({"button", {kZoomButton}, ""});
  actions.push_back({"shot", {}, "loaded.bmp"});
  return actions;
}

TEST_P(WindowsDialog, EveryControl) {
  if (folder_.empty()) return;
  DialogActions actions = everyControl();
  actions.push_back({"button", {kOkButton}, ""});
  playThere(actions, {"--forget"});
  const std::vector<uint8_t> savedThere = readBytes(folder_ + "/saved.q9q");
  const std::vector<uint8_t> randomThere = readBytes(folder_ + "/random.q9q");
  ASSERT_EQ(playHere(actions), 0);
  EXPECT_EQ(readBytes(folder_ + "/saved.q9q"), savedThere);
  EXPECT_EQ(readBytes(folder_ + "/random.q9q"), randomThere);
  expectSameSettings();
  for (const auto& shot : shots_) {
    if (shot.first.rfind("menu", 0) == 0) {
      expectSameMenu(shot.first);
    } else {
      expectSameWindow(shot.first);
    }
  }
  EXPECT_EQ(outputThere(), filteredPicture().samples);
}

TEST_P(WindowsDialog, CancelPutsBackAndKeepsNothing) {
  if (folder_.empty()) return;
  DialogActions actions = everyControl();
  pressKeys(&actions, {kEscapeKey});
  playThere(actions, {"--forget", "--kept-settings", "kept.q9q", "--kept-values", "values.txt"}, 1);
  EXPECT_EQ(playHere(actions), kUserCanceled);
  expectSameSettings();
  EXPECT_TRUE(readBytes(folder_ + "/kept.q9q").empty());
  EXPECT_TRUE(readBytes(folder_ + "/values.txt").empty());
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/output.ppm"));
}

// The second run begins with what the first one was confirmed with.
TEST_P(WindowsDialog, RemembersWhatWasConfirmed) {
  if (folder_.empty()) return;
  DialogActions actions;
  drag(&actions, sliderPoint(28, 20), sliderPoint(28, 77));
  pressForFile(&actions, kEnvironmentButton, kEnvironment);
  const DialogAction confirm = {"button", {kOkButton}, ""};
  actions.push_back(confirm);
  playThere(actions, {"--forget", "--kept-settings", "kept.q9q", "--kept-values", "values.txt"});
  ASSERT_EQ(playHere(actions), 0);
  expectSameSettings();
  EXPECT_EQ(readBytes(folder_ + "/kept.q9q"), readBytes(folder_ + "/settings.q9q"));
  const std::string values = readText("values.txt");
  EXPECT_NE(values.find("ChromeFile 1 260 "), std::string::npos) << values;
  EXPECT_NE(values.find("\\environment.bmp\n"), std::string::npos) << values;
  EXPECT_NE(values.find("TextureFile 1 260 \n"), std::string::npos) << values;
  EXPECT_EQ(values.find("EnviroPath"), std::string::npos) << values;

  playThere({confirm}, {});
  ASSERT_EQ(playHere({confirm}), 0);
  EXPECT_EQ(settingOf("gloss"), 77);
  expectSameSettings();
  EXPECT_EQ(outputThere(), filteredPicture().samples);
}

// Without the rights of an administrator all of it is kept for the user, the folder of a preset's
// pictures as well: the second session asks for nothing.
TEST_P(WindowsDialog, RemembersForOrdinaryUsers) {
  if (folder_.empty()) return;
  DialogActions saving;
  drag(&saving, sliderPoint(28, 20), sliderPoint(28, 77));
  pressForFile(&saving, kEnvironmentButton, kEnvironment);
  pressForFile(&saving, kSaveButton, "named.q9q");
  saving.push_back({"button", {kCancelButton}, ""});
  playThere(saving, {"--forget", "--ordinary-user"}, 1);

  DialogActions loading;
  pressForFile(&loading, kLoadButton, "named.q9q");
  loading.push_back({"answer", {2}, ""});
  loading.push_back({"file", {}, kEnvironment});
  const DialogAction confirm = {"button", {kOkButton}, ""};
  loading.push_back(confirm);
  playThere(loading, {"--forget", "--ordinary-user", "--kept-settings", "kept.q9q", "--kept-values",
                      "values.txt"});
  EXPECT_EQ(readBytes(folder_ + "/kept.q9q"), readBytes(folder_ + "/settings.q9q"));
  const std::string values = readText("values.txt");
  EXPECT_NE(values.find("EnviroPath 1 260 "), std::string::npos) << values;
  EXPECT_NE(values.find("\\elsewhere\\\n"), std::string::npos) << values;
  EXPECT_NE(values.find("ChromeFile 1 260 "), std::string::npos) << values;

  DialogActions again;
  pressForFile(&again, kLoadButton, "named.q9q");
  again.push_back(confirm);
  playThere(again, {"--ordinary-user"});
  ASSERT_EQ(playHere(loading), 0);
  EXPECT_EQ(settingOf("gloss"), 77);
  expectSameSettings();
  EXPECT_EQ(outputThere(), filteredPicture().samples);
}

// A preset names a picture that is not where the module looks; then the user shows where it is.
TEST_P(WindowsDialog, FindsPicturesOfPresets) {
  if (folder_.empty()) return;
  DialogActions saving;
  pressForFile(&saving, kEnvironmentButton, kEnvironment);
  pressForFile(&saving, kSaveButton, "named.q9q");
  saving.push_back({"button", {kCancelButton}, ""});
  playThere(saving, {"--forget"}, 1);

  DialogActions loading;
  pressForFile(&loading, kLoadButton, "named.q9q");
  loading.push_back({"answer", {2}, ""});
  loading.push_back({"file", {}, kEnvironment});
  loading.push_back({"shot", {}, "found.bmp"});
  loading.push_back({"button", {kOkButton}, ""});
  playThere(loading, {"--forget", "--kept-values", "values.txt"});
  const std::string values = readText("values.txt");
  EXPECT_NE(values.find("EnviroPath 1 260 "), std::string::npos) << values;
  EXPECT_NE(values.find("\\elsewhere\\\n"), std::string::npos) << values;
  ASSERT_EQ(playHere(loading), 0);
  expectSameSettings();
  expectSameWindow("found.bmp");
}

// Without the host's colours the system's chooser comes, without its drawing a message; alerts and
// choosers that are cancelled change nothing.
TEST_P(WindowsDialog, SystemsOwnChoosers) {
  if (folder_.empty()) return;
  DialogActions actions = {{"shot", {}, "plain.bmp"}};
  const DialogAction readMessage = {"answer", {1}, ""};
  actions.push_back({"button", {kLight2Button}, ""});
  actions.push_back({"answer", {1}, ""});
  actions.push_back(readMessage);
  actions.push_back({"button", {kTarnishButton}, ""});
  actions.push_back({"answer", {2}, ""});
  actions.push_back(readMessage);
  actions.push_back({"button", {kEnvironmentButton}, ""});
  actions.push_back({"answer", {2}, ""});
  actions.push_back({"button", {kOkButton}, ""});
  playThere(actions, {"--forget", "--withhold", "colorServices", "--withhold", "displayPixels"});
  HostSwitches switches = displayingHost();
  switches.displayPixels = false;
  ASSERT_EQ(playHere({actions.front(), actions.back()}, switches), 0);
  expectSameSettings();
  expectSameWindow("plain.bmp");
}

// The parameter block and the slot come back as copies to a module that was loaded anew.
TEST_P(WindowsDialog, RepeatsAfterBeingLoadedAnew) {
  if (folder_.empty()) return;
  DialogActions actions;
  drag(&actions, sliderPoint(11, 20), sliderPoint(11, -60));
  chooseInMenu(&actions, kTexturePicker, 5);
  actions.push_back({"button", {kOkButton}, ""});
  playThere(actions, {"--forget", "--reload"});
  ASSERT_EQ(playHere(actions), 0);
  ASSERT_EQ(repeatFilter(), 0);
  EXPECT_EQ(outputThere(), filteredPicture().samples);
}

// What hosts do that offer less and care less: a layer with transparency, of which a part is to be
// filtered; sizes that come late, no reduced rows, no Finish, and another load of the module for
// the second time, which shows its dialog again.
TEST_P(WindowsDialog, ServesRougherHosts) {
  if (folder_.empty()) return;
  constexpr Rectangle kArea = {20, 30, 170, 590};
  const DialogAction confirm = {"button", {kOkButton}, ""};
  DialogActions first;
  drag(&first, sliderPoint(9, 20), sliderPoint(9, 83));
  first.push_back({"shot", {}, "first.bmp"});
  first.push_back(confirm);
  DialogActions second;
  chooseInMenu(&second, kShapePicker, 3, "menu-again.bmp");
  second.push_back({"button", {kZoomButton}, ""});
  drag(&second, middleOf(kPreviewArea), at(470, 140));
  second.push_back({"shot", {}, "second.bmp"});
  second.push_back(confirm);

  picture_ = testPicture(kWidth, kHeight, 4);
  writePicture(folder_ + "/layer.pam", picture_);
  writeText(folder_ + "/again.txt", scriptOf(second));
  playThere(first, {"--forget",   "--picture",     "layer.pam",   "--area",     "20,30,170,590",
                    "--owner",    "window",        "--manner",    "harshCalls", "--manner",
                    "hidesSizes", "--manner",      "skipsFinish", "--withhold", "sampling",
                    "--withhold", "movingBuffers", "--reload",    "--again",    "again.txt"});

  HostSwitches switches = displayingHost();
  switches.honourSampling = false;
  ASSERT_EQ(playHere(first, switches, [&kArea] { setFilterRect(kArea); }), 0);
  ASSERT_EQ(rerunDialog(playOf(second, folder_, &shots_)), 0);
  expectSameSettings();
  expectSameWindow("first.bmp");
  expectSameWindow("second.bmp");
  expectSameMenu("menu-again.bmp");
  EXPECT_EQ(outputThere(), filteredPicture().samples);
}

TEST_P(WindowsDialog, AboutBox) {
  if (folder_.empty()) return;
  writeText(folder_ + "/script.txt", "shot about.bmp\ncontrols controls.txt\nkey 27\n");
  runWindowsHost(GetParam(), folder_, {"--about", "--dialog", "script.txt"});
  const HostPicture shot = readShot(folder_ + "/about.bmp");
  EXPECT_EQ(shot.width, 383);
  EXPECT_EQ(shot.height, 397);
  const std::string controls = readText("controls.txt");
  EXPECT_EQ(std::count(controls.begin(), controls.end(), '\n'), 4);
}

// Where the host is aware of scaling the dialog is as large as its window says; of others the
// system enlarges what it shows.
// With 64 bits alone: at 144 dots 32-bit Wine 8 creates any program's window of 600 pixels with
// 400, though moved to a size it takes it.
class WindowsScale : public WindowsDialog {};

TEST_P(WindowsScale, FollowsThatOfItsHost) {
  if (folder_.empty()) return;
  const auto registry = [&](const std::string& verb, const std::string& value,
                            const std::vector<std::string>& more) {
    std::vector<std::string> words = {"reg.exe", verb,  "HKCU\\Control Panel\\Desktop",
                                      "/v",      value, "/f"};
    words.insert(words.end(), more.begin(), more.end());
    runOwnProgram(GetParam(), folder_, words);
  };
  const DialogActions actions = {{"shot", {}, "size.bmp"}, {"button", {kCancelButton}, ""}};
  const auto widthWith = [&](const std::vector<std::string>& more) {
    std::vector<std::string> words = {"--forget", "--owner", "window"};
    words.insert(words.end(), more.begin(), more.end());
    playThere(actions, words, 1);
    return readShot(folder_ + "/size.bmp").width;
  };
  registry("add", "LogPixels", {"/t", "REG_DWORD", "/d", "144"});
  registry("add", "DpiScalingVer", {"/t", "REG_DWORD", "/d", "4096"});  // as Windows has it
  EXPECT_EQ(widthWith({}), kDialogWidth);
  EXPECT_EQ(widthWith({"--knows-scales"}), scaledLength(kDialogWidth, 150));
  registry("delete", "LogPixels", {});
  registry("delete", "DpiScalingVer", {});
  EXPECT_EQ(widthWith({"--knows-scales"}), kDialogWidth);
}

TEST_P(WindowsDialog, LaysOutEveryControl) {
  if (folder_.empty()) return;
  playThere({{"controls", {}, "controls.txt"}, {"button", {kCancelButton}, ""}}, {"--forget"}, 1);
  const std::string listed = "\n" + readText("controls.txt");
  for (int32_t i = 0; i < kMainDialog.controlCount; ++i) {
    const WindowControl& control = kMainDialog.controls[i];
    const Rectangle& r = control.rect;
    const std::string line = "\n" + std::to_string(control.id) + " " + std::to_string(r.left) +
                             " " + std::to_string(r.top) + " " + std::to_string(r.right) + " " +
                             std::to_string(r.bottom) + "\n";
    EXPECT_NE(listed.find(line), std::string::npos) << line;
  }
}

INSTANTIATE_TEST_SUITE_P(Bits, WindowsScale, ::testing::Values(64), kindName);
INSTANTIATE_TEST_SUITE_P(Bits, WindowsDialog, ::testing::Values(64, 32), kindName);
