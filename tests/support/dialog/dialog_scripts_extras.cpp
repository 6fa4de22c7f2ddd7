// What the dialog offers beyond the pointer, and the about box.

#include <gtest/gtest.h>

#include <functional>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "settings/setting_fields.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_scripts.h"

constexpr int32_t kGloss = 28;
constexpr int32_t kHeight = 11;

static void wheelAndArrows() {
  runDialog([](DialogUser& user) {
    user.wheel(sliderPoint(kGloss, 20), 3);
    EXPECT_EQ(settingOf("gloss"), 53);
    user.wheel(middleOf(findSlider(kGloss)->valueArea), -1);
    EXPECT_EQ(settingOf("gloss"), 52) << "its number counts as the slider";
    user.wheel(sliderPoint(kGloss, 20), 1, /*shift=*/true);
    EXPECT_EQ(settingOf("gloss"), 62);
    user.wheel(sliderPoint(kGloss, 20), 9, /*shift=*/true);
    EXPECT_EQ(settingOf("gloss"), 100);
    user.wheel(middleOf(kPreviewArea), 3);
    user.wheel(middleOf(kOkButton), 3);
    look(user, "wheel");
    // Keys go to the slider under the pointer, or to the one that was pressed last.
    user.move(sliderPoint(kHeight, 0));
    user.key(WindowKey::left);
    user.key(WindowKey::down);
    EXPECT_EQ(settingOf("height"), 58);
    user.key(WindowKey::right, /*shift=*/true);
    user.key(WindowKey::up);
    EXPECT_EQ(settingOf("height"), 69);
    user.click(sliderPoint(kGloss, 20));
    user.move(sliderPoint(kHeight, 0));
    user.key(WindowKey::right);
    EXPECT_EQ(settingOf("gloss"), 21);
    EXPECT_EQ(settingOf("height"), 69);
    look(user, "arrows");
    user.clickButton(kOkButton);
  });
}

static void doubleClicks() {
  runDialog([](DialogUser& user) {
    for (const Slider& slider : kSliders) {
      const auto standard = static_cast<int32_t>(findSetting(slider.setting)->defaults[0]);
      user.doubleClick(sliderPoint(slider.id, 33));
      EXPECT_EQ(settingOf(slider.setting), standard) << slider.setting;
    }
    look(user, "defaults");
    // Elsewhere it is two clicks.
    user.doubleClick(middleOf(kCausticToggle));
    EXPECT_EQ(hostSettings()->iriTableChoice, 0U);
    user.click(middleOf(kCausticToggle));
    EXPECT_EQ(hostSettings()->iriTableChoice, 1U);
    user.clickButton(kOkButton);
  });
}

// --- Undo -----------------------------------------------------------------------------------

static std::vector<double> userSettings() {
  std::vector<double> all;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    double values[3];
    readSetting(*hostSettings(), kSettingRanges[i], values);
    all.insert(all.end(), values, values + 3);
  }
  return all;
}

// Every kind of change, one step each, back to the start and forward again. The pictures follow:
// generated textures, of which each is another one, and files.
static void undoAndRedo() {
  const std::string sky = temporaryFile("sky.bmp");
  const std::string leather = temporaryFile("leather.bmp");
  const std::string saved = temporaryFile("saved.q9q");
  offerPicture(sky, 64, 64, std::vector<uint8_t>(64 * 64 * 3, 99));
  offerPicture(leather, 20, 30, std::vector<uint8_t>(20 * 30 * 3, 50));
  answerFiles({saved, sky, leather, saved});
  runDialog([&](DialogUser& user) {
    user.clickButton(kSaveButton);
    std::vector<std::function<void()>> changes = {
        [&] { user.click(sliderPoint(kGloss, 90)); },
        [&] {
          user.press(sliderPoint(kHeight, 0));
          user.move(sliderPoint(kHeight, 30));
          user.move(sliderPoint(kHeight, -30));
          user.release(sliderPoint(kHeight, -30));
        },
        [&] { user.wheel(sliderPoint(kGloss, 20), -4); },
        [&] { user.click(at(70, 290)); },
        [&] { user.click(middleOf(kCausticToggle)); },
        [&] { chooseRow(user, kShapePicker, 9); },
        [&] { chooseRow(user, kTexturePicker, 7); },
        [&] { chooseRow(user, kTexturePicker, 7); },  // the same, but made anew
        [&] { chooseRow(user, kTexturePicker, 11); },
        [&] {
          user.press(middleOf(kTextureSample));
          user.move(at(310, 80));
          user.release(at(310, 80));
        },
        [&] { user.clickButton(kEnvironmentButton); },
        [&] { user.clickButton(kSpinButton); },
        [&] { user.clickButton(kSpinButton); },
        [&] { chooseRow(user, kTexturePicker, 13); },
        [&] {
          hostSettings()->light2Color = {0x3456, 0x1278, 0};
          user.clickButton(kLight2Button);
        },
        [&] { user.clickButton(kRandomizeButton); },
        [&] { user.click(middleOf(kAutoPreviewToggle)); },
        [&] { user.click(sliderPoint(kGloss, 12)); },
        [&] { user.click(middleOf(kAutoPreviewToggle)); },
        [&] { user.clickButton(kLoadButton); },
    };
    std::vector<std::vector<double>> settings = {userSettings()};
    std::vector<WindowPicture> pictures = {user.pixels()};
    for (const auto& change : changes) {
      change();
      // No button has the focus in what is compared.
      user.click(sliderPoint(12, settingOf("glare")));
      settings.push_back(userSettings());
      pictures.push_back(withoutTexts(user.pixels()));
    }
    const size_t last = changes.size();
    for (size_t i = last; i-- > 0;) {
      user.key(WindowKey::undo);
      look(user, "undone to " + std::to_string(i));
      if (hostSettings()->autoPreview == 1) {
        EXPECT_EQ(userSettings(), settings[i]) << i;
      }
    }
    user.key(WindowKey::undo);
    EXPECT_EQ(userSettings(), settings[0]) << "there is no step before";
    EXPECT_STREQ(hostSettings()->environmentPath, "");
    for (size_t i = 1; i <= last; ++i) {
      user.key(WindowKey::redo);
      if (hostSettings()->autoPreview != 1) continue;
      EXPECT_EQ(userSettings(), settings[i]) << i;
      EXPECT_EQ(withoutTexts(user.pixels()).rgb == pictures[i].rgb, true) << i;
    }
    user.key(WindowKey::redo);
    EXPECT_EQ(userSettings(), settings[last]) << "nor one after";
    // A change in the middle ends what could be redone.
    user.key(WindowKey::undo);
    user.click(sliderPoint(kGloss, 3));
    user.key(WindowKey::redo);
    EXPECT_EQ(settingOf("gloss"), 3);
    user.clickButton(kOkButton);
  });
  std::remove(saved.c_str());
}

// More changes than are kept.
static void longHistory() {
  runDialog([](DialogUser& user) {
    for (int32_t i = 0; i < 130; ++i) {
      user.wheel(sliderPoint(kGloss, 20), i % 2 == 0 ? 3 : -2);
      user.wait(701);
    }
    const int32_t last = settingOf("gloss");
    EXPECT_GT(last, 90);
    chooseRow(user, kTexturePicker, 3);
    for (int32_t i = 0; i < 130; ++i) user.key(WindowKey::undo);
    const int32_t oldest = settingOf("gloss");
    EXPECT_GT(oldest, 50);
    for (int32_t i = 0; i < 130; ++i) user.key(WindowKey::redo);
    EXPECT_EQ(settingOf("gloss"), last);
    EXPECT_EQ(settingOf("textureChoice"), 3);
    look(user, "end");
    user.clickButton(kOkButton);
  });
}

// Single steps on one control that come soon after one another are one step; so is a double click
// with what its first click did.
static void steps() {
  runDialog([](DialogUser& user) {
    for (int32_t i = 0; i < 5; ++i) {
      user.wheel(sliderPoint(kGloss, 20), 1);
      user.wait(700);
    }
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 50);
    user.key(WindowKey::redo);
    EXPECT_EQ(settingOf("gloss"), 55);
    user.wheel(sliderPoint(kGloss, 20), 2);
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 55) << "after an undo another one begins";
    user.wheel(sliderPoint(kGloss, 20), 3);
    user.wait(701);
    user.wheel(sliderPoint(kGloss, 20), 3);
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 58) << "too late";
    user.wheel(sliderPoint(kGloss, 20), 1);
    user.wheel(sliderPoint(kHeight, 20), 1);
    user.wheel(sliderPoint(kGloss, 20), 1);
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 59) << "another control has come between";
    user.key(WindowKey::undo);
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 58);
    user.wheel(sliderPoint(kGloss, 20), 4);
    user.wheel(sliderPoint(kGloss, 20), -4);
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 55) << "there and back is no step";
    user.doubleClick(sliderPoint(kGloss, 90));
    EXPECT_EQ(settingOf("gloss"), 50);
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 55);
    user.click(sliderPoint(kGloss, 90));
    user.click(sliderPoint(kGloss, 20));
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), 90) << "two clicks are two";
    user.escape();
  });
}

// --- Looks ----------------------------------------------------------------------------------

static void expectSource(const HostPicture& picture) {
  const HostPicture shown = displayedPicture();
  for (size_t i = 0; i < shown.samples.size(); ++i) {
    const size_t from = i / shown.planes * picture.planes + i % shown.planes;
    ASSERT_EQ(shown.samples[i], picture.samples[from] * 255 / 256);
  }
}

static void untouchedPicture() {
  for (int32_t planes : {1, 2, 3, 4}) {
    const HostPicture picture = testPicture(60, 40, planes);
    const auto play = [&](DialogUser& user) {
      user.click(middleOf(kAutoPreviewToggle));
      user.click(at(134, 324));  // not rendered, so not to be seen afterwards either
      const HostPicture rendered = displayedPicture();
      user.otherDown(middleOf(kPreviewArea));
      expectSource(picture);
      look(user, "held, planes " + std::to_string(planes));
      user.otherUp(at(10, 10));
      EXPECT_EQ(displayedPicture().samples, rendered.samples) << "exactly what was there";
      user.otherDown(at(10, 10));
      EXPECT_EQ(displayedPicture().samples, rendered.samples) << "on the preview only";
      user.otherUp(at(10, 10));
      // A render while it is held stands.
      user.click(middleOf(kAutoPreviewToggle));
      user.otherDown(middleOf(kPreviewArea));
      user.wheel(sliderPoint(kGloss, 20), 5);
      const HostPicture anew = displayedPicture();
      EXPECT_TRUE(anew.samples != rendered.samples);
      user.otherUp(middleOf(kPreviewArea));
      EXPECT_EQ(displayedPicture().samples, anew.samples);
      look(user, "rendered, planes " + std::to_string(planes));
      user.escape();
    };
    runDialog(displayingHost(), picture, {}, play);
  }
}

static std::string seedOption() {
  return " --seed " + std::to_string(hostSettings()->textureSeed);
}

static void copiedCommand() {
  const std::string sky = temporaryFile("it's sky.bmp");
  offerPicture(sky, 64, 64, std::vector<uint8_t>(64 * 64 * 3, 99));
  answerFiles({sky});
  runDialog([&](DialogUser& user) {
    user.key(WindowKey::copy);
    EXPECT_EQ(user.clipboard(), "morvalis apply IMAGE -o OUT" + seedOption());
    user.click(at(61 + 43 + 30, 283 + 41 - 40));
    user.click(middleOf(kAutoPreviewToggle));
    user.click(sliderPoint(kGloss, 81));
    hostSettings()->tarnishColor = {1, 2, 3};
    user.key(WindowKey::copy);
    EXPECT_EQ(user.clipboard(),
              "morvalis apply IMAGE -o OUT --set gloss=81 --set tarnishColor=1,2,3 --set "
              "light1Dir=0.600000024,-0.800000012,0.800000012 --set autoPreview=0" +
                  seedOption());
    EXPECT_EQ(settingOf("gloss"), 50) << "looking changes nothing";
    user.clickButton(kEnvironmentButton);
    user.key(WindowKey::copy);
    std::string quoted = sky;
    quoted.replace(quoted.find('\''), 1, "'\\''");
    EXPECT_NE(user.clipboard().find(" --environment '" + quoted + "'"), std::string::npos);
    // A texture that is drawn anew has a seed of its own; undoing brings the old one back.
    const uint32_t before = hostSettings()->textureSeed;
    chooseRow(user, kTexturePicker, 3);
    EXPECT_NE(hostSettings()->textureSeed, before);
    user.key(WindowKey::undo);
    EXPECT_EQ(hostSettings()->textureSeed, before);
    chooseRow(user, kTexturePicker, 1);
    user.key(WindowKey::copy);
    EXPECT_EQ(user.clipboard().find("--seed"), std::string::npos);
    user.clickButton(kOkButton);
  });
}

static void toolTips() {
  runDialog([](DialogUser& user) {
    EXPECT_EQ(user.toolTip(kGloss), "Gloss 50 (0 to 100): strength of the highlights");
    EXPECT_EQ(user.toolTip(26), user.toolTip(kGloss)) << "its number says the same";
    user.press(sliderPoint(kGloss, 81));
    user.move(sliderPoint(kGloss, 83));
    user.release(sliderPoint(kGloss, 83));
    EXPECT_EQ(user.toolTip(kGloss), "Gloss 83 (0 to 100): strength of the highlights");
    user.wheel(sliderPoint(kGloss, 20), -3);
    EXPECT_EQ(user.toolTip(kGloss), "Gloss 80 (0 to 100): strength of the highlights");
    user.key(WindowKey::undo);
    EXPECT_EQ(user.toolTip(kGloss), "Gloss 83 (0 to 100): strength of the highlights");
    user.click(sliderPoint(kRadiusSlider, 60));
    EXPECT_EQ(user.toolTip(kRadiusSlider), "Radius 70 (2 to 150): width of the bevel in pixels");
    user.click(sliderPoint(kHeight, -100));
    EXPECT_EQ(user.toolTip(kHeight),
              "Height -100 (-100 to 100): height of the bevel; negative presses it in");
    for (const Slider& slider : kSliders) {
      const std::string tip = user.toolTip(slider.id);
      EXPECT_EQ(tip.rfind(slider.name, 0), 0U) << tip;
      note(slider.name, tip);
    }
    EXPECT_EQ(user.toolTip(kShapePicker), "Shape round: cross-section of the bevel");
    chooseRow(user, kShapePicker, 1);
    EXPECT_EQ(user.toolTip(kShapePicker), "Shape chisel: cross-section of the bevel");
    chooseRow(user, kBlendPicker, 2);
    EXPECT_EQ(user.toolTip(kBlendPicker),
              "Blend mode procedural +: how the effect meets the picture");
    EXPECT_EQ(user.toolTip(kSpinButton), "Turn the environment a quarter");
    EXPECT_EQ(user.toolTip(6), "");
    user.clickButton(kOkButton);
  });
}

static void aboutBox() {
  const Point pictures[] = {at(60, 190), at(320, 340), at(56, 26),  at(227, 115),
                            at(56, 143), at(165, 156), at(30, 138), at(47, 155)};
  for (const Point& point : pictures) {
    bool played = false;
    playDialog(
        [&](DialogUser& user) {
          played = true;
          const WindowPicture shown = user.pixels();
          EXPECT_EQ(shown.width, scaled(383));
          EXPECT_EQ(shown.height, scaled(397));
          for (const Point& white : {at(5, 5), at(58, 189), at(300, 100), at(382, 396)}) {
            const size_t i = 3 * (static_cast<size_t>(white.v) * shown.width + white.h);
            EXPECT_EQ(shown.rgb[i] + shown.rgb[i + 1] + shown.rgb[i + 2], 3 * 255);
            user.click(white);
            EXPECT_TRUE(user.isOpen());
          }
          user.press(point);
          EXPECT_FALSE(user.isOpen()) << point.h << "," << point.v;
        },
        [] { return callAbout(); });
    EXPECT_TRUE(played);
  }
  playDialog([](DialogUser& user) { user.key(WindowKey::enter); }, [] { return callAbout(); });
  const int16_t result =
      playDialog([](DialogUser& user) { user.escape(); }, [] { return callAbout(); });
  note("about", std::to_string(result));
}

const std::vector<DialogScript>& extraScripts() {
  static const std::vector<DialogScript> scripts = {{"WheelAndArrows", wheelAndArrows},
                                                    {"DoubleClicks", doubleClicks},
                                                    {"UndoAndRedo", undoAndRedo},
                                                    {"LongHistory", longHistory},
                                                    {"Steps", steps},
                                                    {"UntouchedPicture", untouchedPicture},
                                                    {"CopiedCommand", copiedCommand},
                                                    {"ToolTips", toolTips},
                                                    {"AboutBox", aboutBox}};
  return scripts;
}
