// Nanoseconds per pixel of the height field, up to the border fill: by the slow twin, by stamps and
// by the passes without stamps, for every family of masks. All three must give the same cells
// before anything is timed.
//
//   morvalis_bench_field [SIDE [RADIUS...]]     --fast in front: neither twin nor stamps

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tests/reference/reference_field.h"
#include "tests/support/field_run.h"
#include "tests/support/mask_families.h"
#include "vector/instruction_sets.h"

using Clock = std::chrono::steady_clock;

struct Timing {
  double nanoseconds;  // per pixel
  std::vector<int16_t> cells;
};

// The least of several runs, for at least a tenth of a second.
template <class Run>
static double leastNanoseconds(int64_t pixels, Run run) {
  double least = 1e30;
  double spent = 0;
  for (int32_t i = 0; i < 20 && (i < 3 || spent < 1e8) && (i < 1 || spent < 2e9); ++i) {
    const Clock::time_point start = Clock::now();
    run();
    const double taken = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    spent += taken;
    least = std::min(least, taken);
  }
  return least / static_cast<double>(pixels);
}

static double timeTwin(const ReferenceMask& mask, int32_t radius, std::vector<int16_t>* cells) {
  return leastNanoseconds(int64_t{mask.width} * mask.height, [&] {
    ReferenceField field = referenceEmptyField(mask.width, mask.height);
    referenceStamp(field, mask, radius);
    referenceFillBorder(field, mask, referenceConeStep(radius));
    *cells = std::move(field.cells);
  });
}

static double timeField(const std::vector<uint8_t>& mask, int32_t side, int32_t radius,
                        InstructionSet set, std::vector<int16_t>* cells) {
  const InstructionSet before = chosenInstructionSet();
  limitInstructionSet(set);
  FieldRun run;
  prepareFieldRun(&run, mask, side, side, radius);
  const double nanoseconds = leastNanoseconds(int64_t{side} * side, [&] { runField(&run); });
  limitInstructionSet(before);
  *cells = fieldCellsOf(&run);
  return nanoseconds;
}

int main(int argc, char** argv) {
  std::vector<char*> words(argv + 1, argv + argc);
  const bool fastOnly = !words.empty() && std::strcmp(words[0], "--fast") == 0;
  if (fastOnly) words.erase(words.begin());
  const int32_t side = words.empty() ? 512 : std::clamp(std::atoi(words[0]), 1, 20000);
  std::vector<int32_t> radii;
  for (size_t i = 1; i < words.size(); ++i)
    radii.push_back(std::clamp(std::atoi(words[i]), 1, 150));
  if (radii.empty()) radii = {10, 15, 50, 100, 150};
  const InstructionSet set = chosenInstructionSet();
  std::printf("%d x %d pixels, %s; nanoseconds per pixel\n", side, side, instructionSetName(set));
  std::printf("%-24s %6s %10s %10s %8s %10s\n", "mask", "radius", "twin", "stamps", "fast",
              "twin/fast");
  for (int32_t family = 0; family < kMaskFamilies; ++family) {
    for (int32_t radius : radii) {
      TestRandom random = {static_cast<uint64_t>(family)};
      const ReferenceMask mask = {side, side, maskOfFamily(family, side, side, &random)};
      std::vector<int16_t> cells;
      const double fast = timeField(mask.values, side, radius, set, &cells);
      if (fastOnly) {
        std::printf("%-24s %6d %10s %10s %8.2f\n", maskFamilyName(family), radius, "", "", fast);
        continue;
      }
      std::vector<int16_t> twinCells;
      std::vector<int16_t> stampCells;
      const double twin = timeTwin(mask, radius, &twinCells);
      const double stamps =
          timeField(mask.values, side, radius, InstructionSet::kPlain, &stampCells);
      if (cells != twinCells || stampCells != twinCells) {
        std::fprintf(stderr, "%s, radius %d: the fields differ\n", maskFamilyName(family), radius);
        return 1;
      }
      std::printf("%-24s %6d %10.1f %10.1f %8.2f %10.1f\n", maskFamilyName(family), radius, twin,
                  stamps, fast, twin / fast);
      std::fflush(stdout);
    }
  }
  return 0;
}
