// At 100 % the preview is the final render of the whole picture over the checkerboard, byte for
// byte, wherever it is panned. From a host that delivers the selection of the frame alone it is the
// render of that part as a picture of its own: beyond the frame nothing is selected, and the
// smoothing begins at its sides.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "hosts/substitute_host/host_state.h"
#include "settings/setting_ranges.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/host_runs.h"
#include "tests/support/mask_families.h"

// A relief, and texels of it in a hundred pixels.
struct Relief {
  int32_t textureChoice;
  int32_t textureScale;
  int32_t texels;
};
constexpr Relief kMarble = {6, 55, 110};
constexpr Relief kFineScales = {3, 0, 1600};
constexpr Relief kNoRelief = {1, 55, 110};

static void setUp(const Relief& relief) {
  showEverything(hostSettings());
  hostSettings()->textureChoice = relief.textureChoice;
  hostSettings()->textureScale = relief.textureScale;
}

// What the preview showed, and where of the picture.
struct PreviewPart {
  HostPicture shown;
  int32_t left;
  int32_t top;
};

// Shows the picture at 100 % in the dialog and pans to each place.
static PreviewPart shownPart() {
  const EffectSettings* settings = hostSettings();
  return {displayedPicture(), settings->previewOriginX, settings->previewOriginY};
}

static void panTo(DialogUser& user, const Point& place) {
  const EffectSettings* settings = hostSettings();
  const Point start = middleOf(kPreviewArea);
  const Point end = {static_cast<int16_t>(start.v + settings->previewOriginY - place.v),
                     static_cast<int16_t>(start.h + settings->previewOriginX - place.h)};
  user.press(start);
  user.move(end);
  user.release(end);
}

static std::vector<PreviewPart> panTo(const HostSwitches& switches, const HostPicture& picture,
                                      const HostMask& mask, const Relief& relief,
                                      const std::vector<Point>& places) {
  resetDialogUser();
  std::vector<PreviewPart> parts;
  const auto play = [&](DialogUser& user) {
    user.clickButton(kZoomButton);
    for (const Point& place : places) {
      panTo(user, place);
      EXPECT_EQ(hostSettings()->previewOriginX, place.h);
      EXPECT_EQ(hostSettings()->previewOriginY, place.v);
      parts.push_back(shownPart());
    }
    user.escape();
  };
  runDialog(switches, picture, mask, play, [&] { setUp(relief); });
  closeHost();
  return parts;
}

// The final render of a picture whose relief begins that many pixels further on.
static HostPicture finalRender(const HostPicture& picture, const HostMask& mask,
                               const Relief& relief, int32_t left, int32_t top) {
  const HostRun run = runHost({}, picture, mask, [&] {
    setUp(relief);
    hostSettings()->textureOffsetX = left * relief.texels / 100;
    hostSettings()->textureOffsetY = top * relief.texels / 100;
  });
  EXPECT_EQ(run.result, 0);
  return run.effect;
}

// The largest difference of the preview from a part of a render put over the checkerboard, which
// stands at the render's corner.
static int32_t largestDifference(const HostPicture& shown, const HostPicture& render,
                                 const HostMask& mask, int32_t left = 0, int32_t top = 0) {
  EXPECT_EQ(shown.planes, render.planes);
  int32_t largest = 0;
  for (int32_t i = 0; i < static_cast<int32_t>(shown.samples.size()); ++i) {
    const int32_t x = left + i / shown.planes % shown.width;
    const int32_t y = top + i / shown.planes / shown.width;
    const int32_t pixel = y * render.width + x;
    const int32_t m = mask.empty() ? 255 : mask[pixel];
    const int32_t checker = ((x ^ y) & 8) == 0 ? 255 : 204;
    const int32_t effect = render.samples[pixel * render.planes + i % shown.planes];
    const int32_t wanted = (effect * m + checker * (255 - m)) >> 8;
    largest = std::max(largest, std::abs(shown.samples[i] - wanted));
  }
  return largest;
}

static HostPicture cut(const HostPicture& picture, const PreviewPart& part) {
  HostPicture result = {part.shown.width, part.shown.height, picture.planes, {}};
  for (int32_t y = 0; y < result.height; ++y) {
    const auto row =
        picture.samples.begin() + ((part.top + y) * picture.width + part.left) * picture.planes;
    result.samples.insert(result.samples.end(), row, row + result.width * picture.planes);
  }
  return result;
}

static HostMask cut(const HostMask& mask, int32_t width, const PreviewPart& part) {
  HostMask result;
  if (mask.empty()) return result;
  for (int32_t y = 0; y < part.shown.height; ++y) {
    const auto row = mask.begin() + (part.top + y) * width + part.left;
    result.insert(result.end(), row, row + part.shown.width);
  }
  return result;
}

struct RandomRun {
  HostPicture picture;
  HostMask mask;  // none, one of the families, or two shapes that are far from each other
  EffectSettings settings;
  TestRandom random;
};

static HostMask randomMask(TestRandom* random, int32_t kind, int32_t width, int32_t height) {
  if (kind < kMaskFamilies) return maskOfFamily(kind, width, height, random);
  HostMask mask;
  if (kind == kMaskFamilies) return mask;
  mask.assign(static_cast<size_t>(width) * height, 0);
  for (int32_t shape = 0; shape < 2; ++shape) {
    const int32_t left = randomBetween(random, 0, width - 10);
    const int32_t right = randomBetween(random, left, width);
    const int32_t top = shape == 0 ? 5 : height - randomBetween(random, 8, height / 2);
    for (int32_t y = top; y < (shape == 0 ? 9 : height - 3); ++y) {
      std::fill(mask.begin() + y * width + left, mask.begin() + y * width + right, uint8_t{255});
    }
  }
  return mask;
}

static RandomRun randomRun(int32_t number, int32_t width, int32_t height) {
  RandomRun run = {};
  run.random = {static_cast<uint64_t>(number) + 9000};
  run.picture = testPicture(width, height, number % 2 == 0 ? 3 : 1);
  run.mask = randomMask(&run.random, number % (kMaskFamilies + 2), width, height);
  run.settings = defaultSettings();
  randomSettings(&run.random, &run.settings);
  run.settings.textureChoice = number % kTextureChoiceFile + 1;
  run.settings.autoPreview = 1;
  return run;
}

// Plays with a random run's settings, and compares what was shown with what comes of it.
static void expectPreviewsOfTheResult(
    RandomRun* run, const std::function<void(DialogUser&, std::vector<PreviewPart>*)>& play) {
  resetDialogUser();
  std::vector<PreviewPart> parts;
  const auto prepare = [&] {
    for (int32_t i = 0; i < kSettingRangeCount; ++i) {
      const SettingRange& range = kSettingRanges[i];
      const size_t sizes[] = {sizeof(int32_t), sizeof(uint32_t), sizeof(Direction),
                              sizeof(Color16)};
      std::memcpy(reinterpret_cast<char*>(hostSettings()) + range.offset,
                  reinterpret_cast<const char*>(&run->settings) + range.offset,
                  sizes[static_cast<int32_t>(range.form)]);
    }
  };
  const auto playAndConfirm = [&](DialogUser& user) {
    play(user, &parts);
    user.clickButton(kOkButton);
  };
  ASSERT_EQ(runDialog(displayingHost(), run->picture, run->mask, playAndConfirm, prepare), 0);
  const HostPicture result = filteredPicture();
  closeHost();
  ASSERT_FALSE(parts.empty());
  for (const PreviewPart& part : parts) {
    ASSERT_EQ(largestDifference(part.shown, result, run->mask, part.left, part.top), 0)
        << "at " << part.left << ", " << part.top << " of " << result.width << " x "
        << result.height << ", radius " << run->settings.radius;
  }
}

TEST(Preview, IsTheResultWhereverItIsPanned) {
  constexpr int32_t kRuns = 150;
  constexpr int32_t kPans = 2;
  for (int32_t number = 0; number < kRuns; ++number) {
    SCOPED_TRACE("run " + std::to_string(number));
    TestRandom sizes = {static_cast<uint64_t>(number)};
    const int32_t width = randomBetween(&sizes, 30, 620);
    RandomRun run = randomRun(number, width, randomBetween(&sizes, 30, 620));
    expectPreviewsOfTheResult(&run, [&](DialogUser& user, std::vector<PreviewPart>* parts) {
      user.clickButton(kZoomButton);
      for (int32_t pan = 0; pan < kPans; ++pan) {
        panTo(user, at(randomBetween(&sizes, 0, 620), randomBetween(&sizes, 0, 620)));
        parts->push_back(shownPart());
      }
    });
    if (HasFatalFailure()) return;
  }
}

// The zoom counts pixels of the screen, however many there are.
TEST(Preview, IsTheResultAtEveryScale) {
  for (const int32_t scale : {125, 200, 300}) {
    SCOPED_TRACE(scale);
    setenv("MORVALIS_SCALE", std::to_string(scale).c_str(), 1);
    RandomRun run = randomRun(scale, 1300, 1000);
    expectPreviewsOfTheResult(&run, [&](DialogUser& user, std::vector<PreviewPart>* parts) {
      user.clickButton(kZoomButton);
      panTo(user, {400, 300});
      parts->push_back(shownPart());
      EXPECT_EQ(parts->back().shown.width, scaledLength(298, scale) - 4 * scaledPen(scale));
    });
    unsetenv("MORVALIS_SCALE");
    setDialogScale(kPlainScale);
    if (HasFatalFailure()) return;
  }
}

// A drag in a large picture shows nearly the result, its end the result itself.
TEST(Preview, IsTheResultAfterADrag) {
  for (int32_t number : {4, 11, 37, 75}) {
    SCOPED_TRACE("run " + std::to_string(number));
    RandomRun run = randomRun(number, 1100, 700);
    expectPreviewsOfTheResult(&run, [&](DialogUser& user, std::vector<PreviewPart>* parts) {
      user.clickButton(kZoomButton);
      panTo(user, at(randomBetween(&run.random, 0, 800), randomBetween(&run.random, 0, 400)));
      user.press(sliderPoint(kRadiusSlider, 80));
      for (int32_t radius : {70, 60, 30}) user.move(sliderPoint(kRadiusSlider, radius));
      user.release(sliderPoint(kRadiusSlider, 30));
      parts->push_back(shownPart());
    });
    if (HasFatalFailure()) return;
  }
}

TEST(Preview, OfAHostThatDeliversTheFrameAlone) {
  struct Case {
    Relief relief;
    std::vector<Point> places;  // whole texels
  };
  const Case cases[] = {{kMarble, {at(0, 0), at(100, 50), at(300, 110)}},
                        {kFineScales, {at(37, 101), at(306, 115)}},
                        {kNoRelief, {at(153, 57), at(1, 1)}}};
  HostSwitches switches = displayingHost();
  switches.maskBeyondOutput = false;
  const HostMask mask = testMask(600, 400);
  for (int32_t planes : {1, 3}) {
    const HostPicture picture = testPicture(600, 400, planes);
    for (const Case& each : cases) {
      for (const PreviewPart& part : panTo(switches, picture, mask, each.relief, each.places)) {
        SCOPED_TRACE(std::to_string(part.left) + ", " + std::to_string(part.top));
        ASSERT_EQ(part.shown.width, 294);
        ASSERT_EQ(part.shown.height, 285);
        const HostMask shownMask = cut(mask, 600, part);
        const HostPicture render =
            finalRender(cut(picture, part), shownMask, each.relief, part.left, part.top);
        EXPECT_EQ(largestDifference(part.shown, render, shownMask), 0);
      }
    }
  }
}

// Beyond the picture nothing is asked for, and around the frame what a bevel can come from.
TEST(Preview, AsksForTheSelectionAroundTheFrame) {
  const auto play = [](DialogUser& user) {
    for (int32_t button : {kZoomOutButton, kZoomInButton, kZoomButton}) {
      user.clickButton(button);
      const FilterRecord& record = *hostRecord();
      const int32_t scale = hostSettings()->previewScale;
      const int32_t margin = 150 / scale + 64;
      const Rectangle& in = record.inRect;
      const Rectangle& mask = record.maskRect;
      EXPECT_EQ(mask.left, std::max(in.left - margin, 100 / scale)) << scale;
      EXPECT_EQ(mask.top, std::max(in.top - margin, 60 / scale)) << scale;
      EXPECT_EQ(mask.right, std::min(in.right + margin, 1500 / scale)) << scale;
      EXPECT_EQ(mask.bottom, std::min(in.bottom + margin, 900 / scale)) << scale;
    }
    user.escape();
  };
  runDialog(displayingHost(), testPicture(1600, 1000, 1), testMask(1600, 1000), play, [] {
    setFilterRect({60, 100, 900, 1500});
  });
  closeHost();
}
