// The keyboard: its way through the controls, numbers, menus, and what Enter and Escape do.

#include <gtest/gtest.h>

#include "dialog/controls/control_table.h"
#include "dialog/controls/focus.h"
#include "dialog/dialog_scale.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_scripts.h"

constexpr int32_t kGloss = 28;
constexpr int32_t kHeight = 11;

static void tabTo(DialogUser& user, int32_t id) {
  for (const int32_t stop : kTabOrder) {
    user.key(WindowKey::tab);
    if (stop == id) return;
  }
}

// Tab reaches each control and shows where it is.
static void wayOfTab() {
  runDialog([](DialogUser& user) {
    WindowPicture before = user.pixels();
    for (const int32_t id : kTabOrder) {
      user.key(WindowKey::tab);
      const WindowPicture now = user.pixels();
      EXPECT_TRUE(now.rgb != before.rgb) << id;
      before = now;
      look(user, "tab to " + std::to_string(id));
    }
    user.key(WindowKey::tab);
    user.key(WindowKey::tab, /*shift=*/true);
    EXPECT_TRUE(user.pixels().rgb == before.rgb) << "around the end and back";
    user.clickButton(kZoomInButton);
    look(user, "a disabled button with the focus");
    user.escape();
  });
  // Every control but places and labels has a stop, and no two are the same.
  for (int32_t i = 0; i < kTabStops; ++i) {
    EXPECT_FALSE(isEmptyRect(controlRect(kTabOrder[i])));
    for (int32_t k = 0; k < i; ++k) EXPECT_NE(kTabOrder[i], kTabOrder[k]);
  }
}

static void slidersByKey() {
  runDialog([](DialogUser& user) {
    tabTo(user, kHeight);
    user.move(sliderPoint(kGloss, 20));
    const std::pair<WindowKey, int32_t> keys[] = {
        {WindowKey::up, 61},   {WindowKey::right, 62}, {WindowKey::pageUp, 72},
        {WindowKey::down, 71}, {WindowKey::left, 70},  {WindowKey::pageDown, 60},
        {WindowKey::end, 100}, {WindowKey::home, -100}};
    for (const auto& [key, value] : keys) {
      user.key(key);
      EXPECT_EQ(settingOf("height"), value);
    }
    EXPECT_EQ(settingOf("gloss"), 50) << "the pointer does not count then";
    user.key(WindowKey::right, /*shift=*/true);
    EXPECT_EQ(settingOf("height"), -90);
    look(user, "slider");
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("height"), 60) << "one step";
    // A button that the pointer has pressed leaves the arrows to the pointer, one that Tab has
    // found does not.
    user.clickButton(kSpinButton);
    user.move(sliderPoint(kGloss, 20));
    user.key(WindowKey::right);
    EXPECT_EQ(settingOf("gloss"), 51);
    user.key(WindowKey::tab);
    user.key(WindowKey::tab);
    user.move(sliderPoint(kGloss, 20));
    user.key(WindowKey::pageUp);
    EXPECT_EQ(settingOf("gloss"), 51);
    user.escape();
  });
}

static void padsByKey() {
  runDialog(displayingHost(), testPicture(scaled(600), scaled(400), 3), {}, [](DialogUser& user) {
    tabTo(user, kLight2Pad);
    user.click(at(146 + 43 + 11, 283 + 41 + 3));
    user.key(WindowKey::right);
    EXPECT_FLOAT_EQ(hostSettings()->light2Dir.x, 12 / 33.0F);
    user.key(WindowKey::up);
    EXPECT_FLOAT_EQ(hostSettings()->light2Dir.y, 2 / 33.0F);
    user.key(WindowKey::home);
    EXPECT_LT(hostSettings()->light2Dir.x, -0.99F);
    EXPECT_FLOAT_EQ(hostSettings()->light2Dir.y, 2 / 33.0F);
    user.key(WindowKey::pageDown);
    EXPECT_NEAR(hostSettings()->light2Dir.y, 12 / 34.9, 0.02);
    look(user, "pad");
    user.key(WindowKey::tab);
    tabTo(user, kCausticToggle);
    user.type(" ");
    EXPECT_EQ(hostSettings()->iriTableChoice, 0U) << "somewhere else";
    user.click(middleOf(kCausticToggle));
    user.type(" ");
    EXPECT_EQ(hostSettings()->iriTableChoice, 0U);
    user.press(middleOf(kTextureSample));
    user.move(at(310, 80));
    user.release(at(310, 80));
    const int32_t offset = settingOf("textureOffsetX");
    user.key(WindowKey::left);
    EXPECT_EQ(settingOf("textureOffsetX"), offset + 1) << "to the left, as the pointer does";
    user.clickButton(kZoomButton);
    for (int32_t i = 0; i < 3; ++i) user.key(WindowKey::tab);
    user.key(WindowKey::tab, /*shift=*/true);
    user.key(WindowKey::right);
    look(user, "panned");
    EXPECT_EQ(hostSettings()->previewScale, 1);
    user.escape();
  });
}

// A number stands in the place of the slider's while it is typed.
static void typedNumbers() {
  runDialog([](DialogUser& user) {
    user.click(middleOf(findSlider(kGloss)->label));
    user.type("78");
    EXPECT_EQ(settingOf("gloss"), 50) << "not before Enter";
    look(user, "typing");
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("gloss"), 78);
    EXPECT_TRUE(user.isOpen());
    user.type("999");
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("gloss"), 100) << "the nearest there is";
    user.type("45");
    user.key(WindowKey::backspace);
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("gloss"), 4);
    user.click(middleOf(findSlider(kHeight)->valueArea));
    user.type("-3-7");
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("height"), -37);
    user.type("-");
    user.key(WindowKey::backspace);
    user.type("12");
    user.key(WindowKey::tab);
    EXPECT_EQ(settingOf("height"), 12) << "taken with Tab";
    // The number of the radius is in pixels.
    user.click(middleOf(findSlider(kRadiusSlider)->valueArea));
    const std::pair<const char*, int32_t> radii[] = {{"150", 100}, {"52", 51}, {"1", 2}};
    for (const auto& [text, value] : radii) {
      user.type(text);
      user.key(WindowKey::enter);
      EXPECT_EQ(settingOf("radius"), value);
    }
    look(user, "typed");
    user.type("33");
    user.escape();
    EXPECT_TRUE(user.isOpen());
    EXPECT_EQ(settingOf("radius"), 2) << "given up";
    user.type("34");
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("radius"), 2) << "given up";
    user.type("33");
    user.click(sliderPoint(kGloss, 10));
    EXPECT_EQ(settingOf("radius"), 33) << "taken with a click elsewhere";
    user.type("5");
    user.key(WindowKey::backspace);
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("gloss"), 10) << "nothing was left";
    EXPECT_TRUE(user.isOpen());
    user.type("77");
    user.clickButton(kOkButton);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(settingOf("gloss"), 77) << "taken with OK";
}

static void enterAndEscape() {
  runDialog([](DialogUser& user) {
    user.clickButton(kSpinButton);
    user.key(WindowKey::enter);
    EXPECT_EQ(hostSettings()->environmentTurns, 2) << "Enter presses what has the focus";
    EXPECT_TRUE(user.isOpen());
    // Escape in a drag takes the drag back, and nothing else.
    const int32_t gloss = settingOf("gloss");
    const Point start = sliderPoint(kGloss, 90);
    user.press(start);
    user.move(sliderPoint(kGloss, 95));
    EXPECT_EQ(settingOf("gloss"), 95) << "the preview follows";
    user.key(WindowKey::enter);
    user.escape();
    EXPECT_EQ(settingOf("gloss"), gloss);
    look(user, "drag taken back");
    user.move(sliderPoint(kGloss, 20));
    user.release(sliderPoint(kGloss, 20));
    EXPECT_EQ(settingOf("gloss"), gloss);
    const Direction light = hostSettings()->light1Dir;
    user.press(at(70, 290));
    user.escape();
    user.release(at(70, 290));
    EXPECT_EQ(hostSettings()->light1Dir.x, light.x);
    const int32_t offset = settingOf("textureOffsetX");
    user.press(middleOf(kTextureSample));
    user.move(at(310, 80));
    EXPECT_NE(settingOf("textureOffsetX"), offset);
    user.escape();
    user.release(at(310, 80));
    EXPECT_EQ(settingOf("textureOffsetX"), offset);
    look(user, "all taken back");
    EXPECT_TRUE(user.isOpen());
    user.press(sliderPoint(kGloss, 90));
    user.release(sliderPoint(kGloss, 90));
    user.key(WindowKey::undo);
    EXPECT_EQ(settingOf("gloss"), gloss) << "the drags have left no steps";
    user.escape();
    EXPECT_FALSE(user.isOpen());
  });
  const int16_t result = runDialog([](DialogUser& user) {
    user.click(middleOf(kCausticToggle));
    user.clickButton(kRandomizeButton);
    user.key(WindowKey::tab);
    user.key(WindowKey::tab);
    user.key(WindowKey::tab);  // Cancel
    user.key(WindowKey::enter);
    EXPECT_FALSE(user.isOpen());
  });
  EXPECT_EQ(result, -128);
}

static void menusByKey() {
  runDialog([](DialogUser& user) {
    user.key(WindowKey::tab);
    user.key(WindowKey::down);
    ASSERT_TRUE(user.hasPopup());
    user.key(WindowKey::down);
    user.key(WindowKey::enter);
    EXPECT_FALSE(user.hasPopup());
    EXPECT_EQ(settingOf("shape"), 5);
    user.type(" g");
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("shape"), 13);
    user.type(" ");
    user.key(WindowKey::home);
    user.key(WindowKey::escape);
    EXPECT_FALSE(user.hasPopup());
    EXPECT_EQ(settingOf("shape"), 13);
    EXPECT_TRUE(user.isOpen());
    look(user, "by key");
    user.escape();
  });
}

// A press and release in place leaves the menu open; only a real drag or a second click chooses.
static void menusThatStay() {
  runDialog([](DialogUser& user) {
    const Point press = middleOf(kShapePicker);
    const auto open = [&](int32_t later) {
      user.press(press);
      user.wait(later);
      user.releaseOverPopup(shifted(press, 3, -2));
      return user.hasPopup();
    };
    EXPECT_FALSE(open(301)) << "held too long";
    chooseRow(user, kShapePicker, 9);
    const int32_t before = settingOf("shape");
    ASSERT_TRUE(open(300));
    EXPECT_EQ(settingOf("shape"), before);
    user.popupMove(at(20, 36 * 2 - 18));
    lookAtPopup(user, "stays", 2);
    user.popupPress(at(20, 36 * 2 - 18));
    user.popupRelease(at(20, 36 * 2 - 18));
    EXPECT_FALSE(user.hasPopup());
    EXPECT_EQ(settingOf("shape"), 2);
    ASSERT_TRUE(open(0));
    user.popupPress(at(-30, 10));
    EXPECT_FALSE(user.hasPopup()) << "a click elsewhere";
    user.popupRelease(at(-30, 10));
    EXPECT_EQ(settingOf("shape"), 2);
    user.press(press);
    user.releaseOverPopup(shifted(press, 4, 0));
    EXPECT_FALSE(user.hasPopup()) << "too far away";
    ASSERT_TRUE(open(0));
    user.key(WindowKey::end);
    user.key(WindowKey::enter);
    EXPECT_EQ(settingOf("shape"), 13);
    user.escape();
  });
}

const std::vector<DialogScript>& keyboardScripts() {
  static const std::vector<DialogScript> scripts = {{"WayOfTab", wayOfTab},
                                                    {"SlidersByKey", slidersByKey},
                                                    {"PadsByKey", padsByKey},
                                                    {"TypedNumbers", typedNumbers},
                                                    {"EnterAndEscape", enterAndEscape},
                                                    {"MenusByKey", menusByKey},
                                                    {"MenusThatStay", menusThatStay}};
  return scripts;
}
