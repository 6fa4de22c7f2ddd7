// The main dialog's own ways: commands that no button sends, the mouse's capture and cursors, and
// whatever comes at random. What people do with it stands in the scripts.

#include <gtest/gtest.h>

#include <cmath>

#include "dialog/choices/picture_menus.h"
#include "dialog/controls/control_table.h"
#include "platform/none/none_script.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/random_inputs.h"

class MainDialog : public ::testing::Test {
 protected:
  void SetUp() override {
    resetDialogUser();
  }
  void TearDown() override {
    closeHost();
  }

  // As runDialog, with everything that a window without a screen can do.
  static int16_t play(const HostPicture& picture, const HostMask& mask,
                      const std::function<void(NoneWindow&)>& script) {
    const auto scriptIt = [&script] { noneScript().modalWindows["DISSOLVESANSPARAM"] = script; };
    return runDialog(displayingHost(), picture, mask, nullptr, scriptIt);
  }
};

TEST_F(MainDialog, CommandsThatNothingListens) {
  const int16_t result = play(testPicture(40, 30, 3), {}, [](NoneWindow& window) {
    const EffectSettings before = *hostSettings();
    // Areas, ids without a control, menu rows beyond the last; and notifications of real buttons.
    for (int32_t id : {0, 1, 4, 9, 21, 33, 35, 39, 50, 71, 73, 74, 100, 1999, 2038, 5000, -5}) {
      hostSettings()->scriptAmount = 1;
      window.command(id);
      EXPECT_EQ(hostSettings()->scriptAmount, 50) << id;
    }
    for (int32_t id : {2, 3, 38, 44, 46, 47, 48, 60, 61, 62, 63, 65, 72, 2005}) {
      window.command(id, /*notification=*/1);
    }
    EXPECT_TRUE(window.isOpen());
    EXPECT_EQ(hostSettings()->environmentTurns, before.environmentTurns);
    EXPECT_EQ(hostSettings()->shape, before.shape);
    EXPECT_EQ(hostSettings()->gloss, before.gloss);
    EXPECT_TRUE(noneRecord().choosers.empty());
    window.command(kFirstMenuCommand + 37);
    EXPECT_EQ(hostSettings()->blendMode, 12);
    window.command(kOkButton);
  });
  EXPECT_EQ(result, 0);
}

TEST_F(MainDialog, CaptureAndCursors) {
  play(testPicture(600, 200, 3), {}, [](NoneWindow& window) {
    EXPECT_EQ(window.cursor(), CursorShape::arrow);
    for (int32_t id : {int32_t{kLight1Pad}, int32_t{kLight2Pad}, int32_t{kCausticToggle},
                       int32_t{kAutoPreviewToggle}, int32_t{kTextureSample}, 42, 69}) {
      window.press(middleOf(id));
      EXPECT_TRUE(window.captured()) << id;
      EXPECT_EQ(hostSettings()->dragControl, id);
      EXPECT_EQ(window.cursor() == CursorShape::closedHand, id == kTextureSample) << id;
      window.release(at(1, 1));
      EXPECT_FALSE(window.captured()) << id;
      EXPECT_EQ(hostSettings()->dragControl, -1);
      window.move(at(1, 1));
      EXPECT_EQ(window.cursor(), CursorShape::arrow);
    }
    for (int32_t id : {int32_t{kShapePicker}, int32_t{kPreviewArea}, 6, 25, int32_t{kShapeArrow}}) {
      window.press(middleOf(id));
      EXPECT_FALSE(window.captured()) << id;
      EXPECT_EQ(hostSettings()->dragControl, -1);
      if (window.hasPopup()) window.popup().release(at(-5, 0));
      window.release(middleOf(id));
    }
    window.move(middleOf(kTextureSample));
    EXPECT_EQ(window.cursor(), CursorShape::openHand);
    window.clickButton(kZoomInButton);
    window.move(middleOf(kPreviewArea));
    EXPECT_EQ(window.cursor(), CursorShape::openHand);
    window.press(middleOf(kPreviewArea));
    EXPECT_TRUE(window.captured());
    EXPECT_EQ(window.cursor(), CursorShape::closedHand);
    window.release(middleOf(kPreviewArea));
  });
}

// A pop-up opens about the pointer and stays on the screen, but for its right side.
TEST_F(MainDialog, PlaceOfPopups) {
  play(testPicture(40, 30, 3), {}, [](NoneWindow& window) {
    noneScript().refusesPopups = true;
    window.press(middleOf(kShapePicker));
    window.press(middleOf(kBlendPicker));
    EXPECT_FALSE(window.hasPopup());
    const Point shape = middleOf(kShapePicker);
    const Point blend = middleOf(kBlendPicker);
    ASSERT_EQ(noneRecord().popups.size(), 2U);
    const ShownPopup& first = noneRecord().popups[0];
    EXPECT_EQ(first.height, 468);
    EXPECT_EQ(first.width, 13 + 36);
    EXPECT_EQ(first.screenOrigin.v, 0) << "the top of the screen";
    EXPECT_EQ(first.screenOrigin.h, 80 + shape.h);
    const ShownPopup& second = noneRecord().popups[1];
    EXPECT_EQ(second.height, 432);
    EXPECT_EQ(second.width, 13 + 36 + 6 * 12) << "as wide as its longest name";
    EXPECT_EQ(second.screenOrigin.v, 100 + blend.v - 216);
  });
}

// 20,000 events of every kind, anywhere. Some of them end the dialog; then the next one is opened.
TEST_F(MainDialog, Monkey) {
  TestRandom random = {31337};
  // Saving writes there as well.
  const std::string path = temporaryFile("any");
  scriptBitmap(path, 20, 30, std::vector<uint8_t>(20 * 30 * 3, 50));
  int32_t i = 0;
  const auto script = [&random, &i, &path](NoneWindow& window) {
    for (; i < 20000 && window.isOpen(); ++i) {
      const Point point = at(randomBetween(&random, -20, 700), randomBetween(&random, -20, 390));
      if (i % 500 == 0) noneScript().chosenPaths.push_back(path);
      switch (randomBetween(&random, 0, 11)) {
        case 0:
          window.press(point);
          break;
        case 1:
        case 2:
        case 3:
          if (window.hasPopup()) {
            window.popup().move(point);
          } else {
            window.move(point);
          }
          break;
        case 4:
        case 5:
          if (window.hasPopup()) {
            window.popup().release(point);
          } else {
            window.release(point);
          }
          break;
        case 6:
          window.wheel(point, randomBetween(&random, -3, 3));
          break;
        case 7: {
          const int32_t id = randomBetween(&random, 0, 80);
          if (id > 3 && id != kSaveButton) window.command(id);
          break;
        }
        case 8:
          window.command(randomBetween(&random, 1990, 2050));
          break;
        case 9:
          window.key(static_cast<WindowKey>(randomBetween(&random, 0, 10)));
          break;
        case 10:
          window.otherDown(point);
          window.otherUp(point);
          break;
        default:
          window.doubleClick(point);
          break;
      }
      for (const Slider& slider : kSliders) {
        const int32_t value = settingOf(slider.setting);
        const int32_t low = slider.id == kRadiusSlider ? 0 : slider.minimum;
        ASSERT_TRUE(value >= low && value <= slider.maximum) << slider.setting;
      }
      ASSERT_TRUE(hostSettings()->environmentTurns >= 0 && hostSettings()->environmentTurns < 4);
      ASSERT_TRUE(std::abs(hostSettings()->light1Dir.x) <= 1);
    }
  };
  while (i < 20000 && !HasFailure()) {
    play(testPicture(400, 20, 3), testMask(400, 20), script);
    ASSERT_EQ(hostLedger().buffers, 0);
    ASSERT_EQ(hostLedger().misuses, 0);
  }
  std::remove(path.c_str());
}
