// Nanoseconds per pixel of the shading and composition: the slow twin, the plain form, and the
// lanes of every instruction set, side by side on the same height field, the least of several
// turns. Before anything is timed all must give the same bytes. The first argument is the number
// of turns, the second a part of the names of the cases to run.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <limits>
#include <string>

#include "tests/support/hosts/direct_render.h"
#include "tests/support/shading_runs.h"

static const char* wanted = "";  // cases whose names contain it are run

static const EffectSettings& everythingOn() {
  static const EffectSettings settings = [] {
    EffectSettings on = defaultSettings();
    on.reflection = 40;
    on.tarnish = 30;
    on.glassiness = 40;
    on.iriColors = 30;
    on.light2Color = {30000, 50000, 65535};
    return on;
  }();
  return settings;
}

// A soft ring in every 320 x 320 pixels, on a picture of stripes.
static ShadingInput ringInput(const EffectSettings& settings, int32_t width, int32_t height,
                              int32_t planes) {
  DirectInput render = {};
  render.settings = settings;
  render.width = width;
  render.height = height;
  render.planes = planes;
  render.seed = 1;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const double away = std::hypot(x % 320 - 160, y % 320 - 160);
      const double inside = 60 - std::abs(away - 90);
      render.mask.push_back(static_cast<uint8_t>(std::clamp((inside + 0.5) * 255, 0.0, 255.0)));
      for (int32_t k = 0; k < planes; ++k) {
        render.source.push_back(static_cast<uint8_t>(x * 3 + y * 5 + k * 40));
      }
    }
  }
  ShadingInput input = {settings, width, height, planes, render.source, render.mask, {}, 0, 0};
  renderDirectly(render, [&input](const SessionRecord& session, int32_t phase) {
    if (phase != kPhaseProfile) return;
    const RenderState& state = session.render;
    const auto* cells = static_cast<const int16_t*>(state.heightField.address);
    input.cells.assign(cells, cells + int64_t{state.fieldStride} * state.fieldRows);
    input.edgeHeight = state.profile[kProfileEntries - 1];
    input.depthLow = state.depthLow;
  });
  return input;
}

// Of this process, so that what else runs shows less.
static double secondsOf(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// False when a form gives other bytes than the twin.
static bool compare(const char* name, const ShadingInput& input, int32_t turns) {
  if (std::strstr(name, wanted) == nullptr) return true;
  const auto best = static_cast<int32_t>(bestInstructionSet());
  ShadingRun runs[kInstructionSets];
  for (int32_t set = 0; set <= best; ++set) {
    beginShading(&runs[set], input, static_cast<InstructionSet>(set));
  }
  const TwinShading slow = twinShading(runs[0]);
  const std::vector<uint8_t> expected = shadeByTwin(input, slow);
  for (int32_t set = 0; set <= best; ++set) {
    shadeRows(&runs[set]);
    if (runs[set].output != expected) {
      std::fprintf(stderr, "%s: %s gives other bytes than the twin\n", name,
                   instructionSetName(static_cast<InstructionSet>(set)));
      return false;
    }
  }
  double twin = std::numeric_limits<double>::max();
  double least[kInstructionSets];
  std::fill_n(least, kInstructionSets, twin);
  for (int32_t turn = 0; turn < turns; ++turn) {
    if (turn % 4 == 0) twin = std::min(twin, secondsOf([&] { shadeByTwin(input, slow); }));
    for (int32_t set = 0; set <= best; ++set) {
      ShadingRun* run = &runs[set];
      least[set] = std::min(least[set], secondsOf([run] { shadeRows(run); }));
    }
  }
  const double pixels = static_cast<double>(input.width) * input.height;
  std::printf("%-28s %6.1f", name, twin * 1e9 / pixels);
  for (int32_t set = 0; set <= best; ++set) {
    std::printf("  %7.2f (%5.1f x)", least[set] * 1e9 / pixels, twin / least[set]);
  }
  std::printf("\n");
  return true;
}

int main(int argc, char** argv) {
  const int32_t turns = argc > 1 ? std::atoi(argv[1]) : 20;
  wanted = argc > 2 ? argv[2] : "";
  std::printf("%-28s %6s", "ns a pixel", "twin");
  for (int32_t set = 0; set <= static_cast<int32_t>(bestInstructionSet()); ++set) {
    std::printf("  %17s", instructionSetName(static_cast<InstructionSet>(set)));
  }
  std::printf("\n");
  bool same = true;
  for (const int32_t planes : {3, 1}) {
    const std::string kind = planes == 3 ? "RGB, " : "grey, ";
    ShadingInput input = ringInput(defaultSettings(), 1024, 512, planes);
    same = same && compare((kind + "defaults").c_str(), input, turns);
    EffectSettings metal = defaultSettings();
    metal.reflection = 60;
    input.settings = metal;
    same = same && compare((kind + "reflection 60").c_str(), input, turns);
    input = ringInput(everythingOn(), 1024, 512, planes);
    for (int32_t mode = 1; mode <= kBlendModeCaustic; ++mode) {
      input.settings.blendMode = mode;
      const std::string name = kind + "everything, mode " + std::to_string(mode);
      same = same && compare(name.c_str(), input, turns);
    }
  }
  EffectSettings preview = everythingOn();
  preview.previewMode = 1;
  preview.previewScale = 1;
  preview.radius = 100;
  same = same && compare("preview 294 x 285, R = 150", ringInput(preview, 294, 285, 3), turns);
  return same ? 0 : 1;
}
