// Two drawings for bench/README.md: how the height field's cost grows with the radius, by kind of
// selection, and how the whole render's grows with the picture.
//
//   morvalis_cost_charts FOLDER     writes cost-by-radius.svg and cost-by-size.svg there

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/line_chart.h"
#include "tests/support/field_run.h"
#include "tests/support/hosts/direct_render.h"
#include "tests/support/mask_families.h"
#include "vector/instruction_sets.h"

using Clock = std::chrono::steady_clock;

constexpr int32_t kFieldSide = 512;  // pixels
constexpr int32_t kPlainSide = 256;  // stamping takes long
constexpr double kLongEnough = 4e9;  // nanoseconds; no point beyond one that took as long
constexpr int32_t kRuns = 5;         // the least of them counts
constexpr double kRadii[] = {2, 5, 10, 20, 50, 100, 150};
constexpr double kSides[] = {128, 256, 512, 1024, 2048, 4096};

template <class Run>
static double leastNanoseconds(int32_t runs, Run run) {
  double least = 1e30;
  for (int32_t i = 0; i < runs; ++i) {
    const Clock::time_point start = Clock::now();
    run();
    least = std::min(least, std::chrono::duration<double, std::nano>(Clock::now() - start).count());
  }
  return least;
}

static ChartLine fieldLine(const char* family, InstructionSet set) {
  const bool plain = set == InstructionSet::kPlain;
  const int32_t side = plain ? kPlainSide : kFieldSide;
  TestRandom random = {7};
  const std::vector<uint8_t> mask = maskOfFamily(maskFamilyNamed(family), side, side, &random);
  ChartLine line = {std::string(family) + (plain ? ", plain form" : ""), {}};
  limitInstructionSet(set);
  for (double radius : kRadii) {
    FieldRun run;
    prepareFieldRun(&run, mask, side, side, static_cast<int32_t>(radius));
    const double taken = leastNanoseconds(plain ? 1 : kRuns, [&] { runField(&run); });
    line.points.push_back({radius, taken / (double{1} * side * side)});
    if (taken > kLongEnough) break;
  }
  limitInstructionSet(InstructionSet::kAvx2);
  return line;
}

static LineChart radiusChart() {
  LineChart chart = {"Height field: cost by radius", "radius in pixels", "ns per pixel", {}, {}};
  chart.xMarks.assign(std::begin(kRadii), std::end(kRadii));
  for (const char* family :
       {"letters, antialiased", "letters, hard", "checkerboard 1", "every value random"}) {
    chart.lines.push_back(fieldLine(family, InstructionSet::kAvx2));
  }
  for (const char* family : {"letters, antialiased", "checkerboard 1"}) {
    chart.lines.push_back(fieldLine(family, InstructionSet::kPlain));
  }
  return chart;
}

// A picture of noise under letters, with the default settings or with everything on.
static DirectInput renderInput(int32_t side, int32_t radius, bool everything) {
  TestRandom random = {11};
  DirectInput input = {};
  input.settings = defaultSettings();
  input.settings.radius = radius;
  if (everything) {
    input.settings.reflection = input.settings.tarnish = input.settings.glassiness = 40;
    input.settings.caustic = input.settings.iriColors = 50;
    input.settings.light2Color = {60000, 30000, 9000};
  }
  input.width = input.height = side;
  input.planes = 3;
  input.seed = 1;
  input.mask = maskOfFamily(maskFamilyNamed("letters, antialiased"), side, side, &random);
  input.source.resize(static_cast<size_t>(side) * side * 3);
  for (uint8_t& sample : input.source) {
    sample = static_cast<uint8_t>(randomBetween(&random, 0, 255));
  }
  return input;
}

static ChartLine renderLine(const char* name, int32_t radius, bool everything, InstructionSet set) {
  ChartLine line = {name, {}};
  limitInstructionSet(set);
  for (double side : kSides) {
    const DirectInput input = renderInput(static_cast<int32_t>(side), radius, everything);
    double least = 1e30;
    for (int32_t i = 0; i < (set == InstructionSet::kPlain ? 1 : kRuns); ++i) {
      least = std::min(least, 1e9 * renderDirectly(input).seconds);
    }
    line.points.push_back({side * side / 1e6, least / (side * side)});
  }
  limitInstructionSet(InstructionSet::kAvx2);
  return line;
}

static LineChart sizeChart() {
  LineChart chart = {
      "Whole render: cost by size of the picture", "megapixels", "ns per pixel", {}, {}};
  for (double side : kSides) chart.xMarks.push_back(side * side / 1e6);
  chart.lines = {renderLine("defaults, radius 10", 10, false, InstructionSet::kAvx2),
                 renderLine("defaults, radius 150", 100, false, InstructionSet::kAvx2),
                 renderLine("everything on, radius 10", 10, true, InstructionSet::kAvx2),
                 renderLine("defaults, 10, plain form", 10, false, InstructionSet::kPlain)};
  return chart;
}

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: morvalis_cost_charts FOLDER\n");
    return 2;
  }
  const std::string folder = argv[1];
  const bool written = writeChart(radiusChart(), folder + "/cost-by-radius.svg") &&
                       writeChart(sizeChart(), folder + "/cost-by-size.svg");
  if (!written) std::fprintf(stderr, "%s: cannot be written to\n", argv[1]);
  return written ? 0 : 1;
}
