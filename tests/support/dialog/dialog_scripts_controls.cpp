// Sliders, toggles, light pads, picture menus, and how the dialog ends.

#include <gtest/gtest.h>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "settings/setting_fields.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_scripts.h"

static void sliders() {
  const int16_t result = runDialog([](DialogUser& user) {
    look(user, "start");
    for (const Slider& slider : kSliders) {
      SCOPED_TRACE(slider.setting);
      for (int32_t value : {slider.minimum, slider.minimum + 1, 37, slider.maximum}) {
        user.click(sliderPoint(slider.id, value));
        EXPECT_EQ(settingOf(slider.setting), value);
      }
      // The field follows while the preview does, and far beyond either end is the end.
      user.press(sliderPoint(slider.id, 60));
      EXPECT_EQ(settingOf(slider.setting), 60);
      user.move(at(5, 300));
      look(user, std::string(slider.setting) + " held");
      user.release(at(5, 300));
      EXPECT_EQ(settingOf(slider.setting), slider.minimum);
      user.press(sliderPoint(slider.id, 50));
      user.move(at(675, 0));
      user.release(at(675, 0));
      EXPECT_EQ(settingOf(slider.setting), slider.maximum);
    }
    look(user, "all at their ends");
    user.clickButton(kOkButton);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(result, 0);
  for (const Slider& slider : kSliders) EXPECT_EQ(settingOf(slider.setting), slider.maximum);
}

// A thumb that stands below its slider's start, as after Randomize.
static void belowTheMinimum() {
  runDialog(
      displayingHost(), testPicture(40, 30, 3), {},
      [](DialogUser& user) {
        look(user, "radius 0");
        EXPECT_NE(user.toolTip(kRadiusSlider).find("Radius 0 "), std::string::npos);
        EXPECT_EQ(settingOf("radius"), 0);
        user.clickButton(kOkButton);
      },
      [] { hostSettings()->radius = 0; });
  EXPECT_EQ(settingOf("radius"), 0);
}

static void toggles() {
  runDialog([](DialogUser& user) {
    user.press(middleOf(kCausticToggle));
    look(user, "caustic held");
    user.move(at(10, 10));
    look(user, "caustic left");
    user.release(at(10, 10));
    EXPECT_EQ(hostSettings()->iriTableChoice, 0U);
    user.click(middleOf(kCausticToggle));
    EXPECT_EQ(hostSettings()->iriTableChoice, 1U);
    look(user, "grey");
    user.press(middleOf(kCausticToggle));
    look(user, "grey held");
    user.release(middleOf(kCausticToggle));
    EXPECT_EQ(hostSettings()->iriTableChoice, 0U);

    user.press(middleOf(kAutoPreviewToggle));
    look(user, "auto held");
    user.release(middleOf(kAutoPreviewToggle));
    EXPECT_EQ(hostSettings()->autoPreview, 0U);
    look(user, "auto off");
    user.press(middleOf(kAutoPreviewToggle));
    user.move(at(10, 10));
    user.release(at(10, 10));
    EXPECT_EQ(hostSettings()->autoPreview, 0U);
    user.clickButton(kOkButton);
  });
}

// Without "Auto preview" sliders and menus wait, pads and toggles do not; zooming takes all over.
static void withoutAutoPreview() {
  const HostPicture picture = testPicture(scaled(600), scaled(200), 3);
  runDialog(displayingHost(), picture, {}, [](DialogUser& user) {
    user.click(middleOf(kAutoPreviewToggle));
    const int32_t shownBefore = hostCallCount("advanceState");
    const HostPicture before = displayedPicture();
    user.click(sliderPoint(28, 90));
    EXPECT_EQ(settingOf("gloss"), 50);
    user.click(at(61 + 43 + 30, 283 + 41));
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.x, 30 / 33.0F);
    chooseRow(user, kShapePicker, 2);
    EXPECT_EQ(settingOf("shape"), 2) << "a menu reads the controls";
    EXPECT_EQ(settingOf("gloss"), 90);
    user.click(sliderPoint(28, 20));
    user.clickButton(kSpinButton);
    user.clickButton(kRandomizeButton);
    EXPECT_EQ(displayedPicture().samples, before.samples);
    EXPECT_EQ(hostCallCount("advanceState"), shownBefore);
    user.click(sliderPoint(28, 33));
    EXPECT_NE(settingOf("gloss"), 33);
    user.clickButton(kZoomInButton);
    EXPECT_EQ(settingOf("gloss"), 33);
    EXPECT_NE(displayedPicture().samples, before.samples);
    look(user, "zoomed");
    user.click(sliderPoint(28, 71));
    user.clickButton(kOkButton);
  });
  EXPECT_EQ(settingOf("gloss"), 71) << "OK reads the controls";
}

static void lightPads() {
  runDialog([](DialogUser& user) {
    user.press(at(61 + 43, 283 + 41));
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.x, 0);
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.y, 0);
    look(user, "centre");
    user.move(at(61 + 43 + 30, 283 + 41 - 40));
    user.release(at(61 + 43 + 30, 283 + 41 - 40));
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.x, 0.6F);
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.y, -0.8F);
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.z, 0.8F);
    user.click(at(146 + 43 + 11, 283 + 41));
    EXPECT_FLOAT_EQ(hostSettings()->light2Dir.x, 11 / 33.0F);
    look(user, "inside");
    for (const Point& far : {at(2, 2), at(675, 5), at(400, 365), at(2, 350)}) {
      user.press(at(61 + 43, 283 + 41));
      user.move(far);
      user.release(far);
      const Direction light = hostSettings()->light1Dir;
      EXPECT_NEAR(light.x * light.x + light.y * light.y, 1, 1e-6);
      look(user, "toward " + std::to_string(far.h) + "," + std::to_string(far.v));
    }
    user.clickButton(kOkButton);
  });
  EXPECT_EQ(hostSettings()->light1Angle, 165) << "the angles follow";
}

static void behindTheSurface() {
  runDialog(
      displayingHost(), testPicture(40, 30, 3), {},
      [](DialogUser& user) {
        look(user, "light 2 away from the viewer");
        user.clickButton(kOkButton);
      },
      [] { hostSettings()->light2Dir.z = -0.5F; });
}

// Every row of the three menus.
static void pictureMenus() {
  runDialog([](DialogUser& user) {
    for (const Picker& picker : kPickers) {
      SCOPED_TRACE(picker.setting);
      for (int32_t row = picker.minimum; row <= picker.maximum; ++row) {
        if (picker.id == kTexturePicker && row == kTextureChoiceFile) continue;
        chooseRow(user, picker.id, row);
        EXPECT_EQ(settingOf(picker.setting), row);
      }
      look(user, std::string("last ") + picker.setting);
      user.press(middleOf(picker.id));
      ASSERT_TRUE(user.hasPopup());
      lookAtPopup(user, picker.setting, 0);
      user.popupMove(at(10, 36 * 4 + 3));
      lookAtPopup(user, std::string(picker.setting) + " under the pointer", 5);
      user.popupMove(at(1000, 36 * 4 + 3));
      lookAtPopup(user, std::string(picker.setting) + " left", 0);
      user.popupRelease(at(1000, 36 * 4 + 3));
      EXPECT_FALSE(user.hasPopup());
      EXPECT_NE(settingOf(picker.setting), 5) << "released outside";
      // A little above the first row is still the first.
      user.press(middleOf(picker.id));
      user.popupMove(at(10, -35));
      user.popupRelease(at(10, -35));
      EXPECT_EQ(settingOf(picker.setting), 1);
      user.press(middleOf(picker.id));
      user.popupMove(at(10, 36 * 4 + 3));
      user.popupMove(at(10, -36));
      user.popupRelease(at(10, -36));
      EXPECT_EQ(settingOf(picker.setting), 1) << "a whole row above";
    }
    look(user, "end");
    user.clickButton(kOkButton);
  });
}

// Changes something of every kind.
static void changeEverything(DialogUser& user) {
  do {
    user.clickButton(kRandomizeButton);
  } while (hostSettings()->variant == 1);
  for (const Slider& slider : kSliders) user.click(sliderPoint(slider.id, 33));
  user.click(at(70, 290));
  user.click(at(220, 360));
  user.click(middleOf(kCausticToggle));
  chooseRow(user, kShapePicker, 9);
  chooseRow(user, kTexturePicker, 7);
  chooseRow(user, kTexturePicker, 13);
  chooseRow(user, kBlendPicker, 5);
  user.clickButton(kSpinButton);
  user.clickButton(kTarnishButton);
  user.clickButton(kLight1Button);
  user.clickButton(kLight2Button);
  user.press(middleOf(kTextureSample));
  user.move(at(290, 80));
  user.release(at(290, 80));
  user.clickButton(kEnvironmentButton);
  user.click(middleOf(kAutoPreviewToggle));
}

static void expectSnapshot(const EffectSettings& before) {
  const EffectSettings& after = *hostSettings();
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    double valuesBefore[3];
    double valuesAfter[3];
    readSetting(before, range, valuesBefore);
    readSetting(after, range, valuesAfter);
    const std::string name = range.name;
    const bool survives =
        name == "textureScale" || name == "textureOffsetX" || name == "textureOffsetY";
    for (int32_t k = 0; k < settingComponents(range.form); ++k) {
      EXPECT_EQ(valuesBefore[k] != valuesAfter[k], survives) << name;
    }
  }
  EXPECT_EQ(after.textureWidth, before.textureWidth);
  EXPECT_EQ(after.textureHeight, before.textureHeight);
  EXPECT_EQ(after.constantOne, 77U);
}

static void cancelling() {
  const std::string sky = temporaryFile("sky.bmp");
  const std::string leather = temporaryFile("leather.bmp");
  offerPicture(sky, 64, 64, std::vector<uint8_t>(64 * 64 * 3, 99));
  offerPicture(leather, 30, 20, std::vector<uint8_t>(30 * 20 * 3, 99));
  using Ending = void (*)(DialogUser&);
  const Ending endings[] = {[](DialogUser& user) { user.clickButton(kCancelButton); },
                            [](DialogUser& user) { user.escape(); }};
  for (const Ending& end : endings) {
    HostSwitches switches = displayingHost();
    switches.colorServices = false;
    answerFiles({leather, sky});
    answerColors({{{{1, 2, 3}}, {{4, 5, 6}}, {{7, 8, 9}}}});
    EffectSettings before = {};
    const int16_t result = runDialog(
        switches, testPicture(40, 30, 3), {},
        [&](DialogUser& user) {
          before = *hostSettings();
          changeEverything(user);
          EXPECT_EQ(hostSettings()->light1Color.blue, 6 * 256);
          look(user, "changed");
          EXPECT_NE(hostSettings()->textureHeight, before.textureHeight);
          EXPECT_NE(hostSettings()->variant, before.variant);
          end(user);
          EXPECT_FALSE(user.isOpen());
        },
        [] { hostSettings()->constantOne = 77; });
    EXPECT_EQ(result, -128);
    expectSnapshot(before);
    EXPECT_EQ(hostSettings()->environmentPath, sky) << "chosen pictures survive";
    EXPECT_EQ(hostSettings()->scriptAmount, 1);
    EXPECT_EQ(hostSettings()->scriptMood, 0U);
    EXPECT_EQ(hostSettings()->scriptEntire, 0);
    EXPECT_EQ(filteredPicture().samples, testPicture(40, 30, 3).samples);
    EXPECT_EQ(hostLedger().buffers, 0);
  }
}

static void confirming() {
  const int16_t result = runDialog(
      displayingHost(), testPicture(40, 30, 3), {},
      [](DialogUser& user) {
        user.click(sliderPoint(28, 5));
        EXPECT_EQ(hostSettings()->scriptAmount, 31) << "no command yet";
        user.clickButton(kSpinButton);
        EXPECT_EQ(hostSettings()->scriptAmount, 50);
        user.click(sliderPoint(28, 5));
        user.key(WindowKey::enter);
        EXPECT_FALSE(user.isOpen());
      },
      [] {
        hostSettings()->constantOne = 77;
        hostSettings()->scriptAmount = 31;
      });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(hostSettings()->constantOne, 1U);
  EXPECT_EQ(settingOf("gloss"), 5);
  EXPECT_NE(filteredPicture().samples, testPicture(40, 30, 3).samples);
}

// What was drawn bit by bit is what a dialog that opens with these settings draws.
static void reopening() {
  const std::string sky = temporaryFile("sky.bmp");
  const std::string leather = temporaryFile("leather.bmp");
  std::vector<uint8_t> texels;
  for (int32_t i = 0; i < 40 * 30 * 3; ++i) texels.push_back(static_cast<uint8_t>(i * 7));
  offerPicture(sky, 40, 30, texels);
  offerPicture(leather, 40, 30, texels);
  answerFiles({leather, sky});
  WindowPicture drawn;
  runDialog([&](DialogUser& user) {
    chooseRow(user, kTexturePicker, kTextureChoiceFile);
    user.clickButton(kEnvironmentButton);
    for (const Slider& slider : kSliders) {
      user.press(sliderPoint(slider.id, 80));
      user.move(sliderPoint(slider.id, 10));
      user.release(sliderPoint(slider.id, 66));
    }
    for (const Point& direction : {at(2, 2), at(675, 325), at(100, 365), at(1, 325), at(70, 290)}) {
      user.press(at(104, 324));
      user.move(direction);
      user.release(direction);
      user.press(at(189, 324));
      user.move(direction);
      user.release(direction);
    }
    user.click(middleOf(kCausticToggle));
    user.press(middleOf(kTextureSample));
    user.move(at(290, 80));
    user.move(at(310, 30));
    user.release(at(305, 90));
    chooseRow(user, kShapePicker, 11);
    chooseRow(user, kBlendPicker, 7);
    for (int32_t i = 0; i < 3; ++i) user.clickButton(kSpinButton);
    drawn = user.pixels();
    user.clickButton(kOkButton);
  });
  rerunDialog([&](DialogUser& user) {
    // The opened one has no focus yet; the other one's is on the spin button.
    user.clickButton(kSpinButton);
    for (int32_t i = 0; i < 3; ++i) user.clickButton(kSpinButton);
    const WindowPicture opened = user.pixels();
    for (int32_t y = 0; y < opened.height; ++y) {
      for (int32_t x = 0; x < opened.width; ++x) {
        const size_t i = 3 * (static_cast<size_t>(y) * opened.width + x);
        ASSERT_TRUE(std::equal(&opened.rgb[i], &opened.rgb[i] + 3, &drawn.rgb[i])) << x << "," << y;
      }
    }
    user.escape();
  });
}

const std::vector<DialogScript>& controlScripts() {
  static const std::vector<DialogScript> scripts = {
      {"Sliders", sliders, ScriptScales::whole},
      {"BelowTheMinimum", belowTheMinimum},
      {"Toggles", toggles},
      {"WithoutAutoPreview", withoutAutoPreview, ScriptScales::whole},
      {"LightPads", lightPads, ScriptScales::whole},
      {"BehindTheSurface", behindTheSurface},
      {"PictureMenus", pictureMenus},
      {"Cancelling", cancelling},
      {"Confirming", confirming},
      {"Reopening", reopening}};
  return scripts;
}
