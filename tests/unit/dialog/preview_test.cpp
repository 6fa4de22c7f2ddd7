// At 100 % the preview is the final render over the checkerboard, byte for byte. Panned, that holds
// for the part that it shows, as a picture of its own: beyond the frame nothing is selected, and
// the smoothing begins at its sides.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "dialog/control_table.h"
#include "tests/support/dialog_runs.h"
#include "tests/support/host_runs.h"

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
static std::vector<PreviewPart> panTo(const HostPicture& picture, const HostMask& mask,
                                      const Relief& relief, const std::vector<Point>& places) {
  resetDialogUser();
  std::vector<PreviewPart> parts;
  const auto play = [&](DialogUser& user) {
    const EffectSettings* settings = hostSettings();
    user.clickButton(kZoomButton);
    for (const Point& place : places) {
      const Point start = middleOf(kPreviewArea);
      const Point end = at(start.h + settings->previewOriginX - place.h,
                           start.v + settings->previewOriginY - place.v);
      user.press(start);
      user.move(end);
      user.release(end);
      EXPECT_EQ(settings->previewOriginX, place.h);
      EXPECT_EQ(settings->previewOriginY, place.v);
      parts.push_back({displayedPicture(), settings->previewOriginX, settings->previewOriginY});
    }
    user.escape();
  };
  runDialog(displayingHost(), picture, mask, play, [&] { setUp(relief); });
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

// The largest difference of the preview from a render put over the checkerboard.
static int32_t largestDifference(const HostPicture& shown, const HostPicture& render,
                                 const HostMask& mask) {
  EXPECT_EQ(shown.planes, render.planes);
  int32_t largest = 0;
  for (int32_t i = 0; i < static_cast<int32_t>(shown.samples.size()); ++i) {
    const int32_t x = i / shown.planes % shown.width;
    const int32_t y = i / shown.planes / shown.width;
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

// Smaller than the frame: the whole picture.
TEST(Preview, IsTheRenderOfTheWholePicture) {
  for (int32_t planes : {1, 3}) {
    for (const HostMask& mask : {HostMask{}, testMask(120, 90)}) {
      const HostPicture picture = testPicture(120, 90, planes);
      const std::vector<PreviewPart> parts = panTo(picture, mask, kMarble, {at(0, 0)});
      ASSERT_EQ(parts[0].shown.width, 120);
      const HostPicture render = finalRender(picture, mask, kMarble, 0, 0);
      EXPECT_EQ(largestDifference(parts[0].shown, render, mask), 0);
    }
  }
}

// The frame shows a part as a picture of its own: to a selection that goes on beyond, the frame's
// side is an edge. The relief stays where it is on the whole picture.
TEST(Preview, IsTheRenderOfWhatTheFrameShows) {
  struct Case {
    Relief relief;
    std::vector<Point> places;  // whole texels
  };
  const Case cases[] = {{kMarble, {at(0, 0), at(100, 50), at(300, 110)}},
                        {kFineScales, {at(37, 101), at(306, 115)}},
                        {kNoRelief, {at(153, 57), at(1, 1)}}};
  for (int32_t planes : {1, 3}) {
    for (const HostMask& mask : {HostMask{}, testMask(600, 400)}) {
      const HostPicture picture = testPicture(600, 400, planes);
      for (const Case& each : cases) {
        for (const PreviewPart& part : panTo(picture, mask, each.relief, each.places)) {
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
}
