// The main dialog, played: every control, what it changes, and what OK and Cancel leave.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstring>

#include "dialog/control_table.h"
#include "dialog/picture_menus.h"
#include "dialog/randomize.h"
#include "hosts/substitute_host/host_state.h"
#include "platform/none/none_script.h"
#include "services/random_numbers.h"
#include "settings/setting_ranges.h"
#include "tests/support/dialog_runs.h"
#include "tests/support/random_inputs.h"

class MainDialog : public ::testing::Test {
 protected:
  void SetUp() override {
    resetNone();
  }
  void TearDown() override {
    closeHost();
  }
};

static int32_t settingOf(const char* name) {
  int32_t value = 0;
  std::memcpy(&value, reinterpret_cast<char*>(hostSettings()) + findSetting(name)->offset,
              sizeof(value));
  return value;
}

static Point at(int32_t h, int32_t v) {
  return {static_cast<int16_t>(v), static_cast<int16_t>(h)};
}

TEST_F(MainDialog, SlidersSetTheirSettings) {
  for (const Slider& slider : kSliders) {
    SCOPED_TRACE(slider.setting);
    for (int32_t value : {slider.minimum, slider.minimum + 1, 37, slider.maximum}) {
      EXPECT_EQ(runDialog([&](NoneWindow& window) {
                  window.click(sliderPoint(slider.id, value));
                  window.clickButton(kOkButton);
                }),
                0);
      EXPECT_EQ(settingOf(slider.setting), value);
    }
    // Far beyond either end.
    runDialog([&](NoneWindow& window) {
      window.press(sliderPoint(slider.id, 50));
      window.move(at(-500, 300));
      EXPECT_TRUE(window.captured());
      window.release(at(-500, 300));
      EXPECT_FALSE(window.captured());
      EXPECT_EQ(settingOf(slider.setting), slider.minimum);
      window.press(sliderPoint(slider.id, 50));
      window.move(at(900, 0));
      window.release(at(900, 0));
      window.clickButton(kOkButton);
    });
    EXPECT_EQ(settingOf(slider.setting), slider.maximum);
  }
}

TEST_F(MainDialog, CancelPutsBackTheSnapshotAndNothingElse) {
  EXPECT_EQ(runDialog([](NoneWindow& window) {
              for (const Slider& slider : kSliders) window.click(sliderPoint(slider.id, 33));
              window.click(at(70, 290));  // light 1 far up left
              window.click(middleOf(kCausticToggle));
              window.clickButton(kSpinButton);
              window.command(kFirstMenuCommand + 8);
              window.press(middleOf(kTextureSample));
              window.move(at(290, 80));
              window.release(at(290, 80));
              window.clickButton(kCancelButton);
            }),
            -128);
  const EffectSettings* settings = hostSettings();
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    if (range.form != SettingForm::number) continue;
    const std::string name = range.name;
    const bool survives =
        name == "textureScale" || name == "textureOffsetX" || name == "textureOffsetY";
    EXPECT_EQ(settingOf(range.name) != static_cast<int32_t>(range.defaults[0]), survives) << name;
  }
  EXPECT_FLOAT_EQ(settings->light1Dir.x, -0.4242641F);
  EXPECT_EQ(settings->iriTableChoice, 0U);
  EXPECT_EQ(settings->scriptAmount, 1);
  EXPECT_EQ(filteredPicture().samples, testPicture(40, 30, 3).samples);
  EXPECT_EQ(hostLedger().buffers, 0);
}

TEST_F(MainDialog, TogglesFlipWhenReleasedInside) {
  runDialog([](NoneWindow& window) {
    window.press(middleOf(kCausticToggle));
    window.move(at(10, 10));
    window.release(at(10, 10));
    EXPECT_EQ(hostSettings()->iriTableChoice, 0U);
    window.click(middleOf(kCausticToggle));
    EXPECT_EQ(hostSettings()->iriTableChoice, 1U);
    window.click(middleOf(kAutoPreviewToggle));
    EXPECT_EQ(hostSettings()->autoPreview, 0U);
    // Without it a slider waits for OK.
    window.click(sliderPoint(28, 90));
    EXPECT_EQ(hostSettings()->gloss, 50);
    window.clickButton(kOkButton);
  });
  EXPECT_EQ(hostSettings()->gloss, 90);
}

TEST_F(MainDialog, LightPads) {
  runDialog([](NoneWindow& window) {
    window.press(at(61 + 43, 283 + 41));
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.x, 0);
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.y, 0);
    window.move(at(61 + 43 + 30, 283 + 41 - 40));
    window.release(at(61 + 43 + 30, 283 + 41 - 40));
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.x, 0.6F);
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.y, -0.8F);
    EXPECT_FLOAT_EQ(hostSettings()->light1Dir.z, 0.8F);
    window.click(at(146 + 43 + 11, 283 + 41));
    EXPECT_FLOAT_EQ(hostSettings()->light2Dir.x, 11 / 33.0F);
    window.clickButton(kOkButton);
  });
  EXPECT_EQ(hostSettings()->light1Angle, -54) << "angles follow";
}

TEST_F(MainDialog, PictureMenus) {
  runDialog([](NoneWindow& window) {
    window.press(middleOf(kShapePicker));
    ASSERT_TRUE(window.hasPopup());
    NoneWindow popup = window.popup();
    EXPECT_EQ(popup.pixels().height, 468);
    EXPECT_EQ(popup.pixels().width, 13 + 36);
    popup.move(at(10, 36 * 8 + 3));
    popup.release(at(10, 36 * 8 + 3));
    EXPECT_FALSE(window.hasPopup());
    EXPECT_EQ(hostSettings()->shape, 9);
    window.press(middleOf(kBlendPicker));
    popup = window.popup();
    EXPECT_EQ(popup.pixels().width, 13 + 36 + 6 * 12) << "as wide as its longest name";
    popup.move(at(10, -20));  // a little above still is the first row
    popup.release(at(10, -20));
    EXPECT_EQ(hostSettings()->blendMode, 1);
    window.press(middleOf(kBlendPicker));
    popup = window.popup();
    popup.move(at(10, 40));
    popup.move(at(500, 40));
    popup.release(at(500, 40));
    EXPECT_EQ(hostSettings()->blendMode, 1) << "released outside";
    window.command(kFirstMenuCommand + 37);
    EXPECT_EQ(hostSettings()->blendMode, 12);
    window.command(kFirstMenuCommand + 38);
    window.command(kFirstMenuCommand + 5, /*notification=*/1);
    EXPECT_EQ(hostSettings()->shape, 9);
    window.clickButton(kOkButton);
  });
}

TEST_F(MainDialog, TextureChoices) {
  scriptBitmap("C:\\leather.bmp", 32, 16, std::vector<uint8_t>(32 * 16 * 3, 77));
  runDialog([](NoneWindow& window) {
    window.command(kFirstMenuCommand + 13 + 6);  // cobbles
    EXPECT_EQ(hostSettings()->textureChoice, 7);
    hostSettings()->textureOffsetX = 9;
    window.command(kFirstMenuCommand + 13 + 12);  // a file, but none is chosen
    EXPECT_EQ(hostSettings()->textureChoice, 7);
    EXPECT_EQ(noneRecord().choosers.back().title, "Open a texture picture");
    noneScript().chosenPaths = {"", "C:\\leather.bmp"};
    window.command(kFirstMenuCommand + 13 + 12);
    EXPECT_EQ(hostSettings()->textureChoice, 13);
    EXPECT_EQ(hostSettings()->textureWidth, 32);
    EXPECT_EQ(hostSettings()->textureOffsetX, 0);
    // Dragging shifts, by a full turn at most.
    window.press(at(280, 70));
    window.move(at(285, 68));
    window.release(at(285, 68));
    EXPECT_EQ(hostSettings()->textureOffsetX, 32 - 5);
    EXPECT_EQ(hostSettings()->textureOffsetY, 2);
    // A click opens; cancelled, nothing changes.
    window.click(at(280, 70));
    EXPECT_EQ(hostSettings()->textureChoice, 13);
    window.clickButton(kOkButton);
  });
}

TEST_F(MainDialog, EnvironmentColoursRandomize) {
  scriptBitmap("C:\\sky.bmp", 64, 64, std::vector<uint8_t>(64 * 64 * 3, 99));
  noneScript().chosenPaths = {"", "C:\\sky.bmp"};
  HostSwitches switches;
  switches.colorServices = false;
  runDialog(switches, testPicture(40, 30, 3), {}, [](NoneWindow& window) {
    window.clickButton(kEnvironmentButton);
    EXPECT_EQ(hostSettings()->reflection, 0) << "no file was chosen";
    window.clickButton(kEnvironmentButton);
    EXPECT_EQ(hostSettings()->reflection, 100);
    EXPECT_STREQ(hostSettings()->environmentPath, "C:\\sky.bmp");
    for (int32_t i = 1; i <= 5; ++i) {
      window.clickButton(kSpinButton);
      EXPECT_EQ(hostSettings()->environmentTurns, i % 4);
    }
    seedRandomNumbers(5);
    window.clickButton(kRandomizeButton);
    const EffectSettings drawn = *hostSettings();
    seedRandomNumbers(5);
    EXPECT_EQ(drawn.texture, [] {
      for (;;) {
        const int32_t value = -100 + (randomNumber() >> 4 & 255);
        if (value <= 100) return value;
      }
    }());
    EXPECT_EQ(drawn.light1Color.red & 255, 0);
    EXPECT_STREQ(drawn.environmentPath, "C:\\sky.bmp");
    window.clickButton(kOkButton);
  });
  EXPECT_EQ(rememberedValue("ChromeFile"), "C:\\sky.bmp");
  // A host that refuses every colour counts as one without colour services.
  runDialog([](NoneWindow& window) {
    hostSettings()->light2Color = {0x1234, 0x5678, 0x9ABC};
    window.clickButton(kLight2Button);
    EXPECT_EQ(hostSettings()->light2Color.red, 0x1200) << "the host's components, times 256";
    host().record->colorServices = [](ColorServicesInfo*) -> int16_t { return -30900; };
    hostSettings()->tarnishColor = {0x1234, 0x5678, 0x9ABC};
    window.clickButton(kTarnishButton);
    EXPECT_EQ(hostSettings()->tarnishColor.red, 0x1234) << "the platform's chooser was cancelled";
    window.clickButton(kOkButton);
  });
}

TEST_F(MainDialog, ZoomAndPan) {
  runDialog({}, testPicture(600, 200, 3), testMask(600, 200), [](NoneWindow& window) {
    const EffectSettings* settings = hostSettings();
    EXPECT_EQ(settings->previewScale, 3);
    window.press(middleOf(kPreviewArea));
    EXPECT_FALSE(window.captured()) << "everything is shown already";
    window.clickButton(kZoomOutButton);
    EXPECT_EQ(settings->previewScale, 3);
    window.clickButton(kZoomInButton);
    EXPECT_EQ(settings->previewScale, 2);
    window.clickButton(kZoomOutButton);
    EXPECT_EQ(settings->previewScale, 3);
    EXPECT_EQ(settings->previewOriginX, 0);
    window.clickButton(kZoomButton);
    EXPECT_EQ(settings->previewScale, 1);
    EXPECT_EQ(settings->previewOriginX, 300 - 294 / 2);
    window.move(middleOf(kPreviewArea));
    EXPECT_EQ(window.cursor(), CursorShape::openHand);
    window.press(middleOf(kPreviewArea));
    window.move(at(520 - 40, 153));
    EXPECT_EQ(settings->previewOriginX, 153 + 40);
    window.move(at(520 + 4000, 153));
    window.release(at(520 + 4000, 153));
    EXPECT_EQ(settings->previewOriginX, 0);
    EXPECT_EQ(*hostSession()->result, 0);
    window.clickButton(kOkButton);
  });
  EXPECT_EQ(hostSettings()->previewScale, 1);
}

static void expectPreviewIsTheRender(const HostPicture& displayed, const HostPicture& final,
                                     const HostMask& mask, int32_t left, int32_t top) {
  for (int32_t y = 0; y < displayed.height; ++y) {
    for (int32_t x = 0; x < displayed.width; ++x) {
      const int32_t m = mask.empty() ? 255 : mask[(top + y) * final.width + left + x];
      const int32_t checker = ((x ^ y) & 8) == 0 ? 255 : 204;
      for (int32_t plane = 0; plane < final.planes; ++plane) {
        const int32_t effect =
            final.samples[((top + y) * final.width + left + x) * final.planes + plane];
        ASSERT_EQ(displayed.samples[(y * displayed.width + x) * final.planes + plane],
                  (effect * m + checker * (255 - m)) >> 8)
            << x << ", " << y;
      }
    }
  }
}

// At 100 % the preview of a whole picture is its final render over the checkerboard.
TEST_F(MainDialog, PreviewIsTheRender) {
  for (int32_t planes : {1, 3}) {
    const HostPicture picture = testPicture(120, 90, planes);
    const HostMask mask = testMask(120, 90);
    HostSwitches switches;
    switches.displaysTarget = true;
    switches.display = drawIntoTarget;
    HostPicture displayed;
    EXPECT_EQ(runDialog(
                  switches, picture, mask,
                  [&](NoneWindow& window) {
                    window.click(sliderPoint(kReflectionSlider, 60));
                    displayed = displayedPicture();
                    const NonePicture shown = window.pixels();
                    const size_t centre = (size_t{153} * shown.width + 520) * 3;
                    const size_t middle = (size_t{45} * displayed.width + 60) * displayed.planes;
                    EXPECT_EQ(shown.rgb[centre], displayed.samples[middle]);
                    window.clickButton(kOkButton);
                  },
                  [] { hostSettings()->textureChoice = 1; }),
              0);
    ASSERT_EQ(displayed.width, 120);
    expectPreviewIsTheRender(displayed, filteredPicture(), mask, 0, 0);
  }
}

TEST_F(MainDialog, HostsWithoutPreview) {
  struct Case {
    bool advanceState;
    bool displayPixels;
    int32_t failExchangeAt;
  };
  for (const Case& each : {Case{false, true, 0}, Case{true, false, 0}, Case{true, true, 1}}) {
    HostSwitches switches;
    switches.advanceState = each.advanceState;
    switches.displayPixels = each.displayPixels;
    switches.failExchangeAt = each.failExchangeAt;
    EXPECT_EQ(runDialog(switches, testPicture(600, 200, 3), {},
                        [](NoneWindow& window) {
                          EXPECT_EQ(hostSettings()->hostDrawsPreview, 0);
                          window.click(sliderPoint(28, 80));
                          window.clickButton(kZoomInButton);
                          window.clickButton(kZoomOutButton);
                          window.press(middleOf(kPreviewArea));
                          EXPECT_FALSE(window.captured());
                          window.clickButton(kOkButton);
                        }),
              0);
    EXPECT_EQ(hostSettings()->gloss, 80);
    EXPECT_NE(filteredPicture().samples, testPicture(600, 200, 3).samples);
  }
}

TEST_F(MainDialog, PresetsAreSavedAndLoaded) {
  const std::string path = ::testing::TempDir() + "morvalis-dialog-" + std::to_string(getpid());
  noneScript().chosenPaths = {path, path};
  runDialog([](NoneWindow& window) {
    window.click(sliderPoint(28, 77));
    window.clickButton(kSaveButton);
    window.click(sliderPoint(28, 11));
    window.clickButton(kLoadButton);
    EXPECT_EQ(hostSettings()->gloss, 77);
    window.clickButton(kOkButton);
  });
  EXPECT_EQ(hostSettings()->gloss, 77);
  std::remove(path.c_str());
}

TEST_F(MainDialog, WheelKeysNumbersAndUndo) {
  runDialog([](NoneWindow& window) {
    const EffectSettings* settings = hostSettings();
    window.wheel(sliderPoint(28, 20), 3);
    EXPECT_EQ(settings->gloss, 53);
    window.wheel(middleOf(kPreviewArea), 3);
    window.move(sliderPoint(28, 20));
    window.key(WindowKey::left);
    window.key(WindowKey::right, /*shift=*/true);
    EXPECT_EQ(settings->gloss, 62);
    window.type("7");
    window.type("8");
    window.key(WindowKey::enter);
    EXPECT_EQ(settings->gloss, 78);
    window.doubleClick(sliderPoint(28, 20));
    EXPECT_EQ(settings->gloss, 50);
    window.key(WindowKey::undo);
    EXPECT_NE(settings->gloss, 50);
    window.key(WindowKey::redo);
    EXPECT_EQ(settings->gloss, 50);
    window.clickButton(kRandomizeButton);
    window.key(WindowKey::undo);
    EXPECT_EQ(settings->gloss, 50);
    EXPECT_EQ(settings->radius, 10);
    window.key(WindowKey::copy);
    EXPECT_EQ(noneRecord().clipboard, "morvalis apply IMAGE -o OUT");
    window.clickButton(kOkButton);
  });
}

// 20,000 events of every kind, anywhere. Some of them end the dialog; then the next one is opened.
TEST_F(MainDialog, Monkey) {
  TestRandom random = {31337};
  // Saving writes there as well.
  const std::string path = ::testing::TempDir() + "morvalis-any-" + std::to_string(getpid());
  scriptBitmap(path, 20, 30, std::vector<uint8_t>(20 * 30 * 3, 50));
  int32_t i = 0;
  const auto play = [&random, &i, &path](NoneWindow& window) {
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
    runDialog({}, testPicture(400, 20, 3), testMask(400, 20), play);
    ASSERT_EQ(hostLedger().buffers, 0);
    ASSERT_EQ(hostLedger().misuses, 0);
  }
  std::remove(path.c_str());
}
