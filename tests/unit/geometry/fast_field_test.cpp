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
#include "tests/support/hosts/direct_render.h"
#include "tests/support/mask_families.h"
#include "vector/field/cone_lanes.h"
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

static int32_t firstLane(Lanes lanes) {
  uint16_t all[kLanes];
  store(all, lanes);
  return all[0];
}

// What a code gives at a cross offset, and its sum of lower bounds.
struct Offer {
  int32_t value;
  int32_t sum;
};

static Offer offerOf(const FieldCone& cone, int32_t t, int32_t m, int32_t w) {
  const int16_t* cells = cone.centre + w * cone.stride;
  const int32_t p = 256 * (t - 1) + m;
  const int32_t bound = static_cast<int32_t>(int64_t{p} * p * (1 << cone.scaleBits) >> 16);
  return {((255 - m) * cells[t - 1] + m * cells[t]) >> 8, bound + cone.squares[kNoDistance + w]};
}

// No code that could win is left out: over every code at every offset, the codes whose sums are not
// less than a limit never give more than that limit was made for.
TEST(FastField, LimitsHoldForEveryCode) {
  for (int32_t radius = 1; radius <= kLargestReach; ++radius) {
    FieldRun run;
    prepareFieldRun(&run, {}, 1, 1, radius);
    const SetLimit fast(bestInstructionSet());
    runField(&run);
    const FieldCone& cone = run.fixture.session->render.fastField.cone;
    std::vector<int32_t> least(65536, 65535);  // value by sum
    std::vector<int32_t> most(65537, 0);       // value by sum, then from a sum on
    for (int32_t w = 0; w <= radius; ++w) {
      for (int32_t t = 1; t <= radius + 1; ++t) {
        for (int32_t m = 1; m <= 255; ++m) {
          const Offer offer = offerOf(cone, t, m, w);
          ASSERT_LE(offer.sum, 2 * 65535);
          if (offer.sum > 65535) continue;  // never below a limit, nor above 0 in value
          least[offer.sum] = std::min(least[offer.sum], offer.value);
          most[offer.sum] = std::max(most[offer.sum], offer.value);
        }
      }
    }
    for (int32_t sum = 65535; sum >= 0; --sum) most[sum] = std::max(most[sum], most[sum + 1]);
    for (int32_t best = 0; best <= 3000; ++best) {
      ASSERT_LE(most[firstLane(limitsOf(cone, splat(best)))], best) << "radius " << radius;
    }
    for (int32_t sum = 0; sum < 65536; ++sum) {
      if (least[sum] > 3000) continue;
      ASSERT_LE(most[firstLane(limitsOfLeast(cone, splat(sum)))], least[sum])
          << "radius " << radius << ", sum " << sum;
    }
  }
}

// A host that delivers another mask for the border than for the stamps gets what it delivered last,
// as if it had never done otherwise.
TEST(FastField, StartsOverWhenTheMaskChanges) {
  TestRandom random = {12};
  DirectInput input = randomInput(&random, 37, 29);
  input.settings = defaultSettings();
  input.mask = maskOfFamily(kSmallSoftShapes, 37, 29, &random);
  DirectInput other = input;
  other.mask = maskOfFamily(0, 37, 29, &random);
  DirectInput selected = input;
  selected.mask.clear();
  const auto changedBy = [&](const std::function<void(FilterRecord * filter)>& change) {
    int32_t ended = 0;
    return renderDirectly(input, [&](const SessionRecord& session, int32_t) {
      if (ended++ == 0) change(session.filter);
    });
  };
  const DirectOutput otherRows =
      changedBy([&](FilterRecord* filter) { filter->maskData = other.mask.data(); });
  EXPECT_EQ(otherRows.effect, renderDirectly(other).effect);
  EXPECT_NE(otherRows.effect, renderDirectly(input).effect);
  const DirectOutput narrowRows = changedBy([](FilterRecord* filter) { --filter->maskRect.right; });
  EXPECT_EQ(narrowRows.effect, renderDirectly(selected).effect);
  const DirectOutput noRows = changedBy([](FilterRecord* filter) { filter->maskData = nullptr; });
  EXPECT_EQ(noRows.effect, renderDirectly(selected).effect);
  // All steps of the first pass were in vain, and two of the second, whose first row lies above the
  // picture.
  EXPECT_EQ(noRows.steps, renderDirectly(selected).steps + 29 + 2 + 2);
}

TEST(FastField, LeavesMissingRowsToTheStampsAtOnce) {
  FieldRun run;
  prepareFieldRun(&run, std::vector<uint8_t>(12 * 9, 255), 12, 9, 4);
  SessionRecord* session = run.fixture.session.get();
  const SetLimit fast(bestInstructionSet());
  runField(&run);
  prepareFastField(session);
  ASSERT_EQ(session->render.fastField.inUse, 1);
  session->render.currentRow = -1;
  EXPECT_TRUE(walkFieldRow(session));
  --run.fixture.filter.maskRect.right;
  EXPECT_FALSE(walkFieldRow(session));
}
