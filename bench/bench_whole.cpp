// Whole renders: the slow twin, the plain form and the fast one, side by side, and the longest step
// of the row machine; then refreshes of the dialog's preview while a slider is dragged: gloss,
// which leaves the height field as it is, and the radius, which needs another one.
//
//   morvalis_bench_whole [--fast] [MEGAPIXELS...]     1, 4 and 16
//
// --fast: neither twin nor plain form, which take some 0.5 us a pixel.
// Pixels must be the twin's before anything counts. Processor time, the least of several turns.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <string>

#include "dialog/controls/control_table.h"
#include "tests/reference/reference_render.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/direct_render.h"
#include "tests/support/mask_families.h"
#include "vector/instruction_sets.h"

constexpr int32_t kTurns = 3;
constexpr int32_t kPreviewTurns = 60;
constexpr int32_t kPreviewSide = 1200;  // pixels of the picture; the preview shows 294 x 285
constexpr int32_t kGlossSlider = 28;
constexpr const char* kLetters = "letters, antialiased";

static double secondsNow() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

static void turnEverythingOn(EffectSettings* settings) {
  settings->reflection = settings->tarnish = settings->glassiness = 40;
  settings->caustic = settings->iriColors = 50;
  settings->light2Color = {60000, 30000, 9000};
}

static DirectInput letters(int32_t side, int32_t radius, bool everything) {
  TestRandom random = {11};
  DirectInput input = {};
  input.settings = defaultSettings();
  input.settings.radius = radius;
  if (everything) turnEverythingOn(&input.settings);
  input.width = input.height = side;
  input.planes = 3;
  input.seed = 1;
  input.mask = maskOfFamily(maskFamilyNamed(kLetters), side, side, &random);
  input.source.resize(static_cast<size_t>(side) * static_cast<size_t>(side) * 3);
  input.environment.resize(64 * 64 * 3);
  for (std::vector<uint8_t>* samples : {&input.source, &input.environment}) {
    for (uint8_t& sample : *samples) sample = static_cast<uint8_t>(randomBetween(&random, 0, 255));
  }
  return input;
}

struct Timed {
  double seconds = std::numeric_limits<double>::max();
  double longestStep = std::numeric_limits<double>::max();
  std::vector<uint8_t> effect;
};

static Timed timeProduct(const DirectInput& input, InstructionSet set, int32_t turns) {
  Timed least;
  limitInstructionSet(set);
  for (int32_t i = 0; i < turns; ++i) {
    DirectOutput output = renderDirectly(input);
    least.seconds = std::min(least.seconds, output.seconds);
    least.longestStep = std::min(least.longestStep, output.longestStep);
    least.effect = std::move(output.effect);
  }
  limitInstructionSet(InstructionSet::kAvx2);
  return least;
}

static Timed timeTwin(const DirectInput& input) {
  const ReferenceInput reference = {input.settings,      input.width,   input.height,
                                    input.planes,        input.source,  input.mask,
                                    input.environment,   input.texture, input.textureWidth,
                                    input.textureHeight, input.seed};
  const double start = secondsNow();
  ReferenceOutput output = referenceRender(reference);
  return {secondsNow() - start, 0, std::move(output.effect)};
}

// As the effect takes it and as the dialog shows it.
static int32_t effectiveRadius(int32_t radius) {
  return std::min(radius, 50) + 2 * std::max(radius - 50, 0);
}

static bool timeRender(double megapixels, int32_t radius, bool everything, bool fastOnly) {
  const auto side = static_cast<int32_t>(std::lround(1024 * std::sqrt(megapixels)));
  const DirectInput input = letters(side, radius, everything);
  const Timed fast = timeProduct(input, InstructionSet::kAvx2, kTurns);
  const Timed plain = fastOnly ? fast : timeProduct(input, InstructionSet::kPlain, 1);
  const Timed twin = fastOnly ? fast : timeTwin(input);
  if (fast.effect != twin.effect || plain.effect != twin.effect) {
    std::fprintf(stderr, "%d x %d, radius %d: the renders differ\n", side, side, radius);
    return false;
  }
  const double each = 1e9 / (double{1} * side * side);
  std::printf("%5d %7d %-10s ", side, effectiveRadius(radius),
              everything ? "everything" : "defaults");
  if (fastOnly) {
    std::printf("%8s %8s %8.1f %8s", "", "", fast.seconds * each, "");
  } else {
    std::printf("%8.1f %8.1f %8.1f %8.1f", twin.seconds * each, plain.seconds * each,
                fast.seconds * each, twin.seconds / fast.seconds);
  }
  std::printf(" %10.1f\n", fast.longestStep * 1000);
  std::fflush(stdout);
  return true;
}

static HostMask lettersMask() {
  TestRandom random = {11};
  return maskOfFamily(maskFamilyNamed(kLetters), kPreviewSide, kPreviewSide, &random);
}

// The least time of a refresh when a slider is moved between two numbers, milliseconds.
static double previewTime(int32_t slider, int32_t low, int32_t high, int32_t radius,
                          bool everything) {
  const auto prepare = [&] {
    hostSettings()->radius = radius;
    if (everything) turnEverythingOn(hostSettings());
  };
  double least = std::numeric_limits<double>::max();
  resetDialogUser();
  runDialog(
      displayingHost(), testPicture(kPreviewSide, kPreviewSide, 3), lettersMask(),
      [&](DialogUser& user) {
        user.press(sliderPoint(slider, low));
        for (int32_t i = 0; i < kPreviewTurns; ++i) {
          const double start = secondsNow();
          user.move(sliderPoint(slider, i % 2 == 0 ? high : low));
          least = std::min(least, secondsNow() - start);
        }
        user.release(sliderPoint(slider, low));
        user.escape();
      },
      prepare);
  return least * 1000;
}

static void timePreview(int32_t radius, bool everything) {
  const int32_t shown = effectiveRadius(radius);
  std::printf("%7d %-10s %8.2f %8.2f\n", shown, everything ? "everything" : "defaults",
              previewTime(kGlossSlider, 10, 80, radius, everything),
              previewTime(kRadiusSlider, radius - 1, radius, radius, everything));
  std::fflush(stdout);
}

int main(int argc, char** argv) {
  const bool fastOnly = argc > 1 && std::strcmp(argv[1], "--fast") == 0;
  std::vector<double> sizes;
  for (int i = fastOnly ? 2 : 1; i < argc; ++i)
    sizes.push_back(std::clamp(std::atof(argv[i]), 0.01, 64.0));
  if (sizes.empty()) sizes = {1, 4, 16};
  std::printf("whole render under letters, nanoseconds a pixel (step: milliseconds)\n");
  std::printf("%5s %7s %-10s %8s %8s %8s %8s %10s\n", "side", "radius", "settings", "twin", "plain",
              "fast", "x", "step");
  for (const double megapixels : sizes) {
    for (const int32_t radius : {10, 50, 100}) {
      for (const bool everything : {false, true}) {
        if (!timeRender(megapixels, radius, everything, fastOnly)) return 1;
      }
    }
  }
  std::printf("\nrefresh of a preview while a slider is dragged, milliseconds\n");
  std::printf("%7s %-10s %8s %8s\n", "radius", "settings", "gloss", "radius");
  for (const int32_t radius : {10, 50, 100}) {
    for (const bool everything : {false, true}) timePreview(radius, everything);
  }
  return 0;
}
