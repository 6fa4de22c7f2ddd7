// The height field without stamps against the slow twin, on generated selections, by every
// instruction set that this machine has.
//
// MORVALIS_FIELD_CASES in the environment asks for another number of cases.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "geometry/field/fast_field.h"
#include "tests/reference/reference_field.h"
#include "tests/support/field_run.h"
#include "tests/support/mask_families.h"
#include "vector/instruction_sets.h"

static std::vector<int16_t> twinField(const std::vector<uint8_t>& values, int32_t width,
                                      int32_t height, int32_t radius) {
  const ReferenceMask mask = {width, height, values};
  ReferenceField field = referenceEmptyField(width, height);
  referenceStamp(field, mask, radius);
  referenceFillBorder(field, mask, referenceConeStep(radius));
  return field.cells;
}

static ::testing::AssertionResult sameCells(const std::vector<int16_t>& actual,
                                            const std::vector<int16_t>& expected, int32_t columns) {
  if (actual.size() != expected.size()) return ::testing::AssertionFailure() << actual.size();
  for (size_t i = 0; i < actual.size(); ++i) {
    if (actual[i] == expected[i]) continue;
    return ::testing::AssertionFailure() << actual[i] << " instead of " << expected[i]
                                         << " in column " << i % columns << ", row " << i / columns;
  }
  return ::testing::AssertionSuccess();
}

struct SetLimit {
  explicit SetLimit(InstructionSet set) : before(chosenInstructionSet()) {
    limitInstructionSet(set);
  }
  ~SetLimit() {
    limitInstructionSet(before);
  }
  InstructionSet before;
};

static void compareAllSets(const std::vector<uint8_t>& mask, int32_t width, int32_t height,
                           int32_t radius) {
  const std::vector<int16_t> expected = twinField(mask, width, height, radius);
  FieldRun run;
  prepareFieldRun(&run, mask, width, height, radius);
  for (int32_t set = 0; set <= static_cast<int32_t>(bestInstructionSet()); ++set) {
    const SetLimit limit(static_cast<InstructionSet>(set));
    runField(&run);
    ASSERT_TRUE(sameCells(fieldCellsOf(&run), expected, width + 2))
        << instructionSetName(static_cast<InstructionSet>(set));
    ASSERT_EQ(run.fixture.session->render.fastField.inUse, set == 0 ? 0 : 1);
  }
}

// The twin stamps a whole kernel per edge pixel; this many pixels keep a case short.
static int32_t pixelsFor(int32_t radius) {
  return std::clamp(4000000 / ((2 * radius + 2) * (2 * radius + 2)), 20, 3000);
}

TEST(FastField, GeneratedSelections) {
  const char* wanted = std::getenv("MORVALIS_FIELD_CASES");
  const int32_t cases = wanted == nullptr ? 3000 : std::atoi(wanted);
  TestRandom random = {4711};
  for (int32_t i = 0; i < cases && !::testing::Test::HasFailure(); ++i) {
    const int32_t kind = randomBetween(&random, 0, 9);
    const int32_t radius = kind < 6   ? randomBetween(&random, 1, 12)
                           : kind < 9 ? randomBetween(&random, 8, 60)
                                      : randomBetween(&random, 50, 150);
    const int32_t pixels = pixelsFor(radius);
    const int32_t shape = randomBetween(&random, 0, 7);
    const int32_t width =
        shape == 0   ? 1
        : shape == 1 ? randomBetween(&random, 1, pixels)
                     : randomBetween(&random, 1, 2 * static_cast<int32_t>(std::sqrt(pixels)));
    const int32_t height = std::max(randomBetween(&random, 1, std::max(pixels / width, 1)), 1);
    // Small soft shapes come six times as often as each of the others.
    const int32_t drawn = randomBetween(&random, 0, kMaskFamilies + 4);
    const int32_t family = drawn < kMaskFamilies ? drawn : kSmallSoftShapes;
    SCOPED_TRACE("case " + std::to_string(i) + ": " + maskFamilyName(family) + ", " +
                 std::to_string(width) + " x " + std::to_string(height) + ", radius " +
                 std::to_string(radius));
    compareAllSets(maskOfFamily(family, width, height, &random), width, height, radius);
  }
}
