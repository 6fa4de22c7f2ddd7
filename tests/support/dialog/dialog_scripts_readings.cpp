// What people hear who cannot see the dialog, and what they do with the keyboard alone.

#include <gtest/gtest.h>

#include <cstdio>

#include "dialog/controls/control_table.h"
#include "dialog/controls/focus.h"
#include "dialog/dialog_scale.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_scripts.h"

constexpr int32_t kGloss = 28;
constexpr int32_t kHeight = 11;

static void tabTo(DialogUser& user, int32_t id) {
  for (int32_t i = 0; i < kTabStops; ++i) {
    user.key(WindowKey::tab);
    if (user.reading(id).find(", focused") != std::string::npos) return;
  }
  ADD_FAILURE() << "no way to " << id;
}

// Every control with its role, name, value and range.
static void readings() {
  runDialog(displayingHost(), testPicture(scaled(600), scaled(400), 3), {}, [](DialogUser& user) {
    for (const int32_t id : kTabOrder) {
      const std::string reading = user.reading(id);
      EXPECT_FALSE(reading.empty()) << id;
      note(std::to_string(id), reading);
    }
    EXPECT_EQ(user.reading(kGloss),
              "slider, Gloss, 50, 50 of 0 to 100, strength of the highlights");
    EXPECT_EQ(user.reading(kShapePicker),
              "menu, Shape, round, 4 of 1 to 13, cross-section of the bevel");
    EXPECT_EQ(user.reading(kCausticToggle).rfind("toggle, Grey caustic, off, not checked", 0), 0U);
    EXPECT_EQ(user.reading(kLight1Pad).rfind("dial, Light 1, 135 degrees", 0), 0U)
        << user.reading(kLight1Pad);
    EXPECT_EQ(user.reading(kZoomOutButton), "button, Zoom out, , disabled, Zoom out");
    EXPECT_EQ(user.reading(kPreviewArea).rfind("image, Preview, 33%", 0), 0U);
    EXPECT_EQ(user.reading(kLight1Button), "button, Color of light 1, #ffffff, Color of light 1");
    EXPECT_EQ(user.reading(6), "") << "a label";

    user.click(sliderPoint(kRadiusSlider, 60));
    EXPECT_NE(user.reading(kRadiusSlider).find("Radius, 70, 70 of 2 to 150, focused"),
              std::string::npos);
    user.click(middleOf(kCausticToggle));
    EXPECT_NE(user.reading(kCausticToggle).find(", on, checked, focused"), std::string::npos);
    user.clickButton(kZoomInButton);
    EXPECT_NE(user.reading(kZoomButton).find("50%"), std::string::npos);
    chooseRow(user, kBlendPicker, 2);
    EXPECT_NE(user.reading(kBlendPicker).find("procedural +, 2 of 1 to 12"), std::string::npos);
    user.escape();
  });
}

// The row of an open menu that the user is at, by pointer and by key.
static void rowNames() {
  runDialog([](DialogUser& user) {
    user.press(middleOf(kTexturePicker));
    user.popupMove(at(20, 36 * 2 - 18));
    EXPECT_EQ(user.rowName(), "leather");
    EXPECT_NE(user.reading(kTexturePicker).find(", leather, 2 of"), std::string::npos);
    user.popupMove(at(20, 36 * 9 - 18));
    EXPECT_EQ(user.rowName(), "clouds");
    user.popupMove(at(-50, 10));
    EXPECT_EQ(user.rowName(), "");
    user.popupRelease(at(-50, 10));
    EXPECT_NE(user.reading(kTexturePicker).find(", marble, 6 of"), std::string::npos);
    tabTo(user, kShapePicker);
    user.key(WindowKey::down);
    EXPECT_EQ(user.rowName(), "round");
    user.key(WindowKey::up);
    EXPECT_EQ(user.rowName(), "sine");
    user.key(WindowKey::escape);
    user.escape();
  });
}

// A preset made, loaded and confirmed without a pointer.
static void keyboardAlone() {
  const std::string saved = temporaryFile("by-keyboard.q9q");
  std::remove(saved.c_str());
  answerFiles({saved, saved});
  const int16_t result = runDialog([&](DialogUser& user) {
    tabTo(user, kShapePicker);
    user.type(" ");
    user.type("h");
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("shape"), 5);
    tabTo(user, kGloss);
    user.type("77");
    user.key(WindowKey::enter);
    tabTo(user, kHeight);
    user.key(WindowKey::pageDown);
    tabTo(user, kCausticToggle);
    user.type(" ");
    tabTo(user, kTexturePicker);
    user.key(WindowKey::down);
    user.key(WindowKey::end);
    user.key(WindowKey::up);
    user.key(WindowKey::enter);
    tabTo(user, kSaveButton);
    user.key(WindowKey::enter);
    tabTo(user, kGloss);
    user.key(WindowKey::home);
    tabTo(user, kRandomizeButton);
    user.type(" ");
    tabTo(user, kLoadButton);
    user.type(" ");
    look(user, "loaded");
    user.key(WindowKey::help);
    EXPECT_EQ(user.shownSheets(), 1);
    user.type("?");
    EXPECT_EQ(user.shownSheets(), 2);
    tabTo(user, kOkButton);
    user.key(WindowKey::enter);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(settingOf("shape"), 5);
  EXPECT_EQ(settingOf("gloss"), 77);
  EXPECT_EQ(settingOf("height"), 50);
  EXPECT_EQ(hostSettings()->iriTableChoice, 1U);
  EXPECT_EQ(settingOf("textureChoice"), 12);
  EXPECT_EQ(shownAlerts(), 0);
  std::remove(saved.c_str());
}

const std::vector<DialogScript>& readingScripts() {
  static const std::vector<DialogScript> scripts = {{"Readings", readings, ScriptScales::whole},
                                                    {"RowNames", rowNames},
                                                    {"KeyboardAlone", keyboardAlone}};
  return scripts;
}
