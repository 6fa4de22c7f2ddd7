// Nanoseconds per pixel of every pass and of the whole render, by picture size, radius and kind of
// selection edge. Each case renders once untimed first; the figures are the medians of the timed
// renders. Before anything is timed a render is done twice and must give the same pixels.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

#include "tests/support/direct_render.h"

using Clock = std::chrono::steady_clock;

constexpr int32_t kTimedRenders = 3;
constexpr int32_t kCell = 320;  // pixels; the selection repeats one rounded letter per cell
constexpr double kStroke = 60;  // half the width of its stroke
constexpr double kRing = 90;    // radius of its centre line

static uint8_t selectionAt(int32_t x, int32_t y, bool antialiased) {
  const double dx = x % kCell - kCell / 2;
  const double dy = y % kCell - kCell / 2;
  const double inside = kStroke - std::abs(std::hypot(dx, dy) - kRing);
  if (!antialiased) return inside > 0 ? 255 : 0;
  return static_cast<uint8_t>(std::clamp((inside + 0.5) * 255, 0.0, 255.0));
}

static DirectInput letters(int32_t megapixels, int32_t radius, bool antialiased) {
  DirectInput input = {};
  input.settings = defaultSettings();
  input.settings.radius = radius;
  input.settings.reflection = 40;
  input.settings.tarnish = 30;
  input.settings.glassiness = 30;
  const auto side = static_cast<int32_t>(std::lround(1000 * std::sqrt(megapixels)));
  input.width = side;
  input.height = side;
  input.planes = 3;
  input.seed = 1;
  input.source.resize(static_cast<size_t>(side) * side * 3);
  input.mask.resize(static_cast<size_t>(side) * side);
  for (int32_t y = 0; y < side; ++y) {
    for (int32_t x = 0; x < side; ++x) {
      const size_t pixel = static_cast<size_t>(y) * side + x;
      input.mask[pixel] = selectionAt(x, y, antialiased);
      for (int32_t channel = 0; channel < 3; ++channel) {
        input.source[3 * pixel + channel] = static_cast<uint8_t>(x * 3 + y * 5 + channel * 40);
      }
    }
  }
  return input;
}

// Nanoseconds by what took them.
using Times = std::map<const char*, double>;

static const char* nameOf(int32_t phase) {
  switch (phase) {
    case kPhaseStamp:
      return "stamp";
    case kPhaseBorder:
      return "border";
    case kPhaseSmoothForward:
      return "forward";
    case kPhaseSmoothBackward:
      return "backward";
    default:
      return "profile";
  }
}

static Times timeRender(const DirectInput& input) {
  Times times;
  const Clock::time_point start = Clock::now();
  Clock::time_point before = start;
  const auto spent = [&before] {
    const Clock::time_point now = Clock::now();
    const double nanoseconds = std::chrono::duration<double, std::nano>(now - before).count();
    before = now;
    return nanoseconds;
  };
  // Set-up is counted with the first pass: it does not grow with the picture.
  renderDirectly(input,
                 [&](const SessionRecord&, int32_t phase) { times[nameOf(phase)] = spent(); });
  times["shade"] = spent();
  times["whole"] = std::chrono::duration<double, std::nano>(before - start).count();
  return times;
}

static double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

static void render(benchmark::State& state) {
  const DirectInput input = letters(static_cast<int32_t>(state.range(0)),
                                    static_cast<int32_t>(state.range(1)), state.range(2) != 0);
  renderDirectly(input);
  std::map<const char*, std::vector<double>> runs;
  for (auto _ : state) {
    const Times times = timeRender(input);
    for (const auto& [name, nanoseconds] : times) runs[name].push_back(nanoseconds);
    state.SetIterationTime(times.at("whole") / 1e9);
  }
  const double pixels = static_cast<double>(input.width) * input.height;
  for (const auto& [name, nanoseconds] : runs) {
    state.counters[std::string(name) + "_ns/px"] = median(nanoseconds) / pixels;
  }
}

BENCHMARK(render)
    ->ArgNames({"megapixels", "radius", "antialiased"})
    ->ArgsProduct({{1, 4, 16}, {10, 50, 100}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(kTimedRenders);

int main(int argc, char** argv) {
  const DirectInput check = letters(1, 20, true);
  if (renderDirectly(check).effect != renderDirectly(check).effect) {
    std::fprintf(stderr, "two renders of the same picture differ; nothing is timed\n");
    return 1;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
