// The preview: zoom, pan, sizes of pictures, and hosts that offer less.

#include <gtest/gtest.h>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_scripts.h"
#include "tests/support/hosts/large_host.h"

static void zoomAndPan() {
  const HostPicture picture = testPicture(scaled(600), scaled(200), 3);
  const HostMask mask = testMask(scaled(600), scaled(200));
  runDialog(displayingHost(), picture, mask, [](DialogUser& user) {
    const EffectSettings* settings = hostSettings();
    EXPECT_EQ(settings->previewScale, 3);
    look(user, "everything");
    user.move(middleOf(kPreviewArea));
    EXPECT_FALSE(user.showsHand());
    user.press(middleOf(kPreviewArea));
    user.move(at(500, 100));
    user.release(at(500, 100));
    EXPECT_EQ(settings->previewOriginX, 0) << "everything is shown already";
    const size_t before = hostExchanges().size();
    user.clickButton(kZoomOutButton);
    EXPECT_EQ(settings->previewScale, 3);
    EXPECT_EQ(hostExchanges().size(), before);
    user.clickButton(kZoomInButton);
    EXPECT_EQ(settings->previewScale, 2);
    EXPECT_EQ(hostExchanges().size(), before + 2) << "emptied first, then asked for";
    look(user, "a half");
    user.clickButton(kZoomOutButton);
    EXPECT_EQ(settings->previewScale, 3);
    EXPECT_EQ(settings->previewOriginX, 0);
    user.clickButton(kZoomButton);
    EXPECT_EQ(settings->previewScale, 1);
    EXPECT_EQ(settings->previewOriginX, scaled(300 - 294 / 2));
    const size_t full = hostCallCount("displayPixels");
    user.clickButton(kZoomInButton);
    EXPECT_EQ(hostCallCount("displayPixels"), static_cast<int32_t>(full)) << "no further";
    look(user, "full size");
    user.move(middleOf(kPreviewArea));
    EXPECT_TRUE(user.showsHand());
    user.press(middleOf(kPreviewArea));
    EXPECT_TRUE(user.showsHand());
    user.move(at(520 - 40, 153));
    EXPECT_EQ(settings->previewOriginX, scaled(153 + 40));
    look(user, "while panning");
    user.move(at(675, 360));
    user.move(at(520 - 40 + 150, 153));
    user.release(at(679, 153));
    look(user, "panned");
    user.press(at(400, 20));
    user.move(at(679, 20));
    user.release(at(679, 20));
    EXPECT_EQ(settings->previewOriginX, 0) << "no further than the picture";
    user.press(at(660, 20));
    user.move(at(380, 20));
    user.move(at(660, 20));
    user.move(at(380, 25));
    user.release(at(380, 25));
    look(user, "at the left");
    EXPECT_EQ(settings->previewOriginY, 0);
    EXPECT_EQ(*hostSession()->result, 0);
    user.clickButton(kOkButton);
  });
  EXPECT_EQ(hostSettings()->previewScale, 1);
}

// The source over the checkerboard, as far as the preview shows it.
static void expectRawPicture(const HostPicture& picture, const HostMask& mask) {
  const HostPicture shown = displayedPicture();
  const int32_t left = hostSettings()->previewOriginX;
  const int32_t top = hostSettings()->previewOriginY;
  ASSERT_EQ(shown.width, scaled(294));
  ASSERT_EQ(shown.height, scaled(285));
  for (int32_t i = 0; i < shown.width * shown.height * shown.planes; ++i) {
    const int32_t x = left + i / shown.planes % shown.width;
    const int32_t y = top + i / shown.planes / shown.width;
    const int32_t from = y * picture.width + x;
    const int32_t source = picture.samples[from * picture.planes + i % shown.planes];
    const int32_t m = mask[from];
    const int32_t checker = ((x ^ y) & 8) == 0 ? 255 : 204;
    ASSERT_EQ(shown.samples[i], (source * m + checker * (255 - m)) / 256) << x << ", " << y;
  }
}

// The pan shows the untouched picture, and ends with a rendered one without "Auto preview", too.
static void panWithoutAutoPreview() {
  for (int32_t planes : {1, 3, 4}) {
    const HostPicture picture = testPicture(scaled(400), scaled(300), planes);
    const HostMask mask = testMask(scaled(400), scaled(300));
    runDialog(displayingHost(), picture, mask, [&](DialogUser& user) {
      user.click(middleOf(kAutoPreviewToggle));
      user.clickButton(kZoomButton);
      user.press(at(500, 200));
      user.move(at(479, 190));
      // With transparency there is what the host has delivered.
      if (planes != 4) expectRawPicture(picture, mask);
      look(user, "raw, planes " + std::to_string(planes));
      const HostPicture raw = displayedPicture();
      user.release(at(479, 190));
      EXPECT_TRUE(displayedPicture().samples != raw.samples);
      look(user, "rendered, planes " + std::to_string(planes));
      user.escape();
    });
  }
}

// The host's picture stands in the middle of its area.
static void expectCentred(const WindowPicture& window) {
  const HostPicture shown = displayedPicture();
  const int32_t left = (371 + 669 - shown.width) / 2;
  const int32_t top = (9 + 298 - shown.height) / 2;
  for (int32_t i = 0; i < shown.width * shown.height; ++i) {
    const int32_t pixel = (top + i / shown.width) * window.width + left + i % shown.width;
    const size_t from = static_cast<size_t>(i) * shown.planes;
    ASSERT_EQ(window.rgb[static_cast<size_t>(3 * pixel)], shown.samples[from]) << i;
    ASSERT_EQ(window.rgb[static_cast<size_t>(3 * pixel + 2)],
              shown.samples[from + shown.planes - 1])
        << i;
  }
}

static void oneSize(int32_t width, int32_t height, int32_t planes, int32_t fit) {
  SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
  const std::string name =
      std::to_string(width) + "x" + std::to_string(height) + "x" + std::to_string(planes);
  const int16_t result =
      runDialog(displayingHost(), testPicture(width, height, planes), {}, [&](DialogUser& user) {
        EXPECT_EQ(hostSettings()->previewScale, fit);
        look(user, name);
        expectCentred(user.pixels());
        user.click(sliderPoint(kReflectionSlider, 60));
        for (int32_t i = 0; i < 4; ++i) user.clickButton(kZoomInButton);
        look(user, name + " in");
        user.press(middleOf(kPreviewArea));
        user.move(at(400, 20));
        user.release(at(400, 20));
        for (int32_t i = 0; i < 4; ++i) user.clickButton(kZoomOutButton);
        EXPECT_EQ(hostSettings()->previewScale, fit);
        look(user, name + " out");
        user.clickButton(kOkButton);
      });
  EXPECT_EQ(result, 0);
}

static void sizes() {
  oneSize(1, 1, 3, 1);
  oneSize(1, 1, 1, 1);
  oneSize(294, 285, 3, 1);
  oneSize(295, 285, 3, 2);
  oneSize(294, 286, 1, 2);
  oneSize(600, 200, 3, 3);
  oneSize(3, 900, 1, 4);
  oneSize(900, 1, 3, 4);
}

static void largePicture() {
  HostSwitches switches = displayingHost();
  switches.bufferSuite = SuiteOffer::absent;  // memory that is never touched is never used
  const int16_t result = runDialog(
      switches, testPicture(8, 8, 3), HostMask(64, 255),
      [](DialogUser& user) {
        const EffectSettings* settings = hostSettings();
        EXPECT_EQ(settings->previewScale, 2) << "its largest shape";
        user.clickButton(kZoomButton);
        int32_t before = 1;
        for (int32_t scale : {2, 3, 4, 5, 6, 7, 8, 16, 32, 41}) {
          user.clickButton(kZoomOutButton);
          EXPECT_EQ(settings->previewScale, scale);
          if (scale == 41) break;
          user.clickButton(kZoomInButton);
          EXPECT_EQ(settings->previewScale, before);
          user.clickButton(kZoomOutButton);
          before = scale;
        }
        EXPECT_EQ(displayedPicture().width, 12000 / 41);
        EXPECT_EQ(displayedPicture().height, 9000 / 41);
        look(user, "everything");
        user.clickButton(kZoomInButton);
        EXPECT_EQ(settings->previewScale, 32);
        user.clickButton(kZoomButton);
        EXPECT_EQ(settings->previewScale, 1);
        EXPECT_EQ(displayedPicture().width, 294);
        user.press(at(400, 40));
        user.move(at(660, 280));
        user.release(at(660, 280));
        look(user, "full size");
        for (int32_t i = 0; i < 40; ++i) {
          user.press(at(660, 290));
          user.move(at(375, 15));
          user.release(at(375, 15));
        }
        EXPECT_EQ(settings->previewOriginX, 12000 - 294);
        EXPECT_EQ(settings->previewOriginY, 9000 - 285);
        look(user, "the last corner");
        user.escape();
      },
      [] { enlargeHost(12000, 9000); });
  EXPECT_EQ(result, -128);
}

// A large picture opens where a bevel can be seen: at its largest shape, or at full size.
static void openingZoom() {
  struct Case {
    int32_t width;  // of the shape, and its height
    int32_t radius;
    int32_t scale;
  };
  const Rectangle frame = {0, 0, 285, 294};
  for (const Case& each : {Case{1600, 30, 6}, Case{1600, 10, 1}, Case{200, 10, 1},
                           Case{3800, 100, 15}, Case{3999, 100, 15}}) {
    SCOPED_TRACE(std::to_string(each.width) + ", " + std::to_string(each.radius));
    constexpr int32_t kSide = 4000;
    HostMask mask(kSide * kSide, 0);
    const int32_t left = (kSide - each.width) / 3;
    for (int32_t y = left; y < left + each.width; ++y) {
      std::fill_n(mask.begin() + y * kSide + left, each.width, uint8_t{255});
    }
    if (each.radius == 30) mask[0] = 255;
    runDialog(
        displayingHost(), testPicture(kSide, kSide, 1), mask,
        [&](DialogUser& user) {
          const EffectSettings* settings = hostSettings();
          const int32_t scale = settings->previewScale;
          EXPECT_EQ(scale, each.scale);
          const int32_t middle = left + each.width / 2;
          if (scale < 15) {
            EXPECT_NEAR(settings->previewOriginX + frame.right * scale / 2, middle, 30);
            EXPECT_NEAR(settings->previewOriginY + frame.bottom * scale / 2, middle, 30);
          } else {
            EXPECT_EQ(settings->previewOriginX, 0);
          }
          user.escape();
        },
        [&] { hostSettings()->radius = each.radius; });
  }
}

// A selection in the middle of the picture, and a host that does not reduce or has no rows of the
// selection.
static void partsOfPictures() {
  struct Case {
    const char* name;
    bool honourSampling;
    bool deliverMask;
  };
  for (const Case& each :
       {Case{"usual", true, true}, Case{"unreduced", false, true}, Case{"unmasked", true, false}}) {
    HostSwitches switches = displayingHost();
    switches.honourSampling = each.honourSampling;
    switches.deliverMask = each.deliverMask;
    const int16_t result = runDialog(
        switches, testPicture(900, 700, 3), testMask(900, 700),
        [&](DialogUser& user) {
          EXPECT_EQ(hostSettings()->previewScale, 2);
          look(user, each.name);
          user.clickButton(kZoomInButton);
          user.press(at(500, 100));
          user.move(at(480, 90));
          user.release(at(480, 90));
          look(user, std::string(each.name) + " panned");
          EXPECT_EQ(*hostSession()->result, 0);
          user.clickButton(kZoomOutButton);
          user.clickButton(kOkButton);
        },
        [] {
          setFilterRect({101, 203, 101 + 400, 203 + 450});
        });
    EXPECT_EQ(result, 0);
  }
}

static void hostsWithoutPreview() {
  struct Case {
    const char* name;
    bool advanceState;
    bool displayPixels;
    int32_t failExchangeAt;
    bool complains;
  };
  for (const Case& each :
       {Case{"no exchange", false, true, 0, false}, Case{"no display", true, false, 0, true},
        Case{"first exchange fails", true, true, 1, false}}) {
    SCOPED_TRACE(each.name);
    HostSwitches switches = displayingHost();
    switches.advanceState = each.advanceState;
    switches.displayPixels = each.displayPixels;
    switches.failExchangeAt = each.failExchangeAt;
    const int32_t alertsBefore = shownAlerts();
    const int16_t result = runDialog(
        switches, testPicture(600, 200, 3), {},
        [&](DialogUser& user) {
          const EffectSettings* settings = hostSettings();
          EXPECT_EQ(settings->hostDrawsPreview, 0);
          EXPECT_EQ(*hostSession()->result, 0);
          look(user, each.name);
          user.click(sliderPoint(28, 80));
          EXPECT_EQ(settings->gloss, 80);
          user.click(middleOf(kAutoPreviewToggle));
          user.click(sliderPoint(28, 81));
          user.clickButton(kZoomInButton);
          user.clickButton(kZoomOutButton);
          EXPECT_EQ(settings->gloss, 80) << "neither does anything";
          user.clickButton(kZoomButton);
          EXPECT_EQ(settings->gloss, 81);
          user.press(middleOf(kPreviewArea));
          user.move(at(400, 20));
          EXPECT_FALSE(user.showsHand());
          EXPECT_EQ(settings->dragControl, -1);
          user.release(at(400, 20));
          user.otherDown(middleOf(kPreviewArea));
          user.otherUp(middleOf(kPreviewArea));
          look(user, std::string(each.name) + " used");
          user.clickButton(kOkButton);
        },
        [] { hostSettings()->autoPreview = 1; });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(shownAlerts() > alertsBefore, each.complains);
    EXPECT_NE(filteredPicture().samples, testPicture(600, 200, 3).samples);
  }
}

// A pan whose rows the host cannot deliver: the next render says so, and OK still renders.
static void failingPan() {
  HostSwitches switches = displayingHost();
  switches.failExchangeAt = 4;  // first image; emptied and full size; the pan
  const int16_t result =
      runDialog(switches, testPicture(scaled(600), scaled(200), 3), {}, [](DialogUser& user) {
        user.clickButton(kZoomButton);
        user.press(at(500, 100));
        user.move(at(480, 100));
        EXPECT_NE(*hostSession()->result, 0);
        EXPECT_EQ(shownAlerts(), 0);
        user.release(at(480, 100));
        EXPECT_EQ(shownAlerts(), 1);
        user.press(at(500, 100));
        user.move(at(490, 100));
        user.release(at(490, 100));
        EXPECT_EQ(*hostSession()->result, 0);
        look(user, "delivered again");
        user.clickButton(kOkButton);
      });
  EXPECT_EQ(result, 0);
}

const std::vector<DialogScript>& previewScripts() {
  static const std::vector<DialogScript> scripts = {
      {"ZoomAndPan", zoomAndPan, ScriptScales::whole},
      {"PanWithoutAutoPreview", panWithoutAutoPreview, ScriptScales::whole},
      {"Sizes", sizes, ScriptScales::plain},
      {"LargePicture", largePicture, ScriptScales::plain},
      {"OpeningZoom", openingZoom, ScriptScales::plain},
      {"PartsOfPictures", partsOfPictures, ScriptScales::plain},
      {"HostsWithoutPreview", hostsWithoutPreview},
      {"FailingPan", failingPan, ScriptScales::whole}};
  return scripts;
}
