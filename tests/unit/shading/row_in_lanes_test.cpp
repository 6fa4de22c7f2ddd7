// The lanes of every instruction set against the plain form, and the plain form against the slow
// twin, byte for byte, on height fields no render would give. MORVALIS_LONG=1 makes it long.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "shading/shade_row.h"
#include "tests/reference/reference_number.h"
#include "tests/support/random_inputs.h"
#include "tests/support/shading_runs.h"
#include "vector/lane_arithmetic.h"
#include "vector/row_division.h"

static int32_t oneOf(TestRandom* random, std::initializer_list<int32_t> values) {
  return values.begin()[randomBetween(random, 0, static_cast<int32_t>(values.size()) - 1)];
}

// Slopes of a size that most renders have, with steps up to what the lanes bear, or beyond.
static void fillCells(TestRandom* random, ShadingInput* input) {
  const int32_t stride = input->width + 2;
  const int32_t step = oneOf(random, {0, 3, 40, 200, 740, 749, 750, 1400, 3000, 40000});
  const bool extremes = randomBetween(random, 0, 2) == 0;
  const int32_t tilt = extremes ? 0 : randomBetween(random, -60, 60);
  const int32_t base = randomBetween(random, -30000, 30000);
  for (int32_t j = 0; j < input->height + 2; ++j) {
    for (int32_t i = 0; i < stride; ++i) {
      const int32_t away =
          extremes ? step * oneOf(random, {-1, 1}) : randomBetween(random, -step, step);
      const int32_t cell = base + tilt * (i + j) + away;
      input->cells.push_back(static_cast<int16_t>(std::clamp(cell, -32768, 32767)));
    }
  }
}

static ShadingInput randomShading(TestRandom* random, int32_t width, int32_t height) {
  const DirectInput render = randomInput(random, width, height);
  ShadingInput input = {
      render.settings, width, height, render.planes, render.source, render.mask, {}, 0, 0};
  // Half the cases have most stages off, as renders do.
  for (int32_t* field : {&input.settings.reflection, &input.settings.tarnish,
                         &input.settings.glassiness, &input.settings.iriColors}) {
    if (randomBetween(random, 0, 3) == 0) *field = 0;
  }
  if (randomBetween(random, 0, 2) == 0) input.settings.light2Color = {};
  input.settings.previewScale = std::max(input.settings.previewScale, 1);
  fillCells(random, &input);
  const int32_t highest = oneOf(random, {0, 1, 3, 100, 3600, 30000});
  input.edgeHeight = static_cast<int16_t>(oneOf(random, {0, highest, -highest, input.cells[0]}));
  input.depthLow = oneOf(random, {0, -highest, highest, -randomBetween(random, 0, 30000)});
  return input;
}

static bool isLong() {
  return std::getenv("MORVALIS_LONG") != nullptr;
}

static int32_t fasterSets() {
  return static_cast<int32_t>(bestInstructionSet());
}

static void compareForms(const ShadingInput& input, bool withTwin) {
  ShadingRun plain;
  beginShading(&plain, input, InstructionSet::kPlain);
  shadeRows(&plain);
  if (withTwin) {
    referenceBeyond32Bits = 0;
    const std::vector<uint8_t> expected = shadeByTwin(input, twinShading(plain));
    // The twin's numbers have 64 bits.
    if (referenceBeyond32Bits == 0) {
      ASSERT_EQ(plain.output, expected);
    }
  }
  for (int32_t set = 1; set <= fasterSets(); ++set) {
    ShadingRun run;
    beginShading(&run, input, static_cast<InstructionSet>(set));
    shadeRows(&run);
    ASSERT_EQ(run.output, plain.output) << instructionSetName(static_cast<InstructionSet>(set));
  }
}

TEST(RowInLanes, GeneratedRows) {
  TestRandom random = {31};
  const int32_t cases = isLong() ? 24000 : 2200;
  for (int32_t i = 0; i < cases && !HasFatalFailure(); ++i) {
    const int32_t width = i % 5 == 0 ? randomBetween(&random, 200, 600)
                                     : randomBetween(&random, 1, i % 3 == 0 ? 5 : 70);
    const ShadingInput input = randomShading(&random, width, randomBetween(&random, 1, 5));
    SCOPED_TRACE("case " + std::to_string(i) + ", width " + std::to_string(width) + ", planes " +
                 std::to_string(input.planes) + ", mode " +
                 std::to_string(input.settings.blendMode));
    compareForms(input, i % 4 == 0);
  }
}

// Wider than the words that the row memories would share if they had fixed places.
TEST(RowInLanes, WideRows) {
  TestRandom random = {32};
  for (const int32_t width : {2175, 2177, 2179, 2300, 11000}) {
    ShadingInput input = randomShading(&random, width, 3);
    input.settings.tarnish = 80;
    input.settings.reflection = 60;
    compareForms(input, true);
  }
}

// What only damaged presets hold: the lanes have to leave them to the plain form.
TEST(RowInLanes, SettingsBeyondTheirRanges) {
  TestRandom random = {33};
  for (int32_t i = 0; i < 300 && !HasFatalFailure(); ++i) {
    ShadingInput input = randomShading(&random, 40, 2);
    EffectSettings& s = input.settings;
    int32_t* const fields[] = {&s.reflection,  &s.glassiness, &s.caustic, &s.gloss,
                               &s.glare,       &s.tarnish,    &s.height,  &s.iriColors,
                               &s.iridescence, &s.blendMode};
    int32_t* field = fields[i % std::size(fields)];
    *field = oneOf(&random, {-1, 101, -101, 140, 1000, -70000, 20000000, INT32_MAX, INT32_MIN});
    if (i % 7 == 0) s.light1Dir.z = static_cast<float>(randomBetween(&random, -90, 90));
    input.depthLow = oneOf(&random, {input.depthLow, 40000, INT32_MIN, INT32_MAX});
    SCOPED_TRACE("case " + std::to_string(i) + ", value " + std::to_string(*field));
    compareForms(input, false);
  }
}

// Source and result in one buffer, at any distance from each other.
TEST(RowInLanes, OverlappingBuffers) {
  TestRandom random = {34};
  for (int32_t distance = -8; distance <= 8; ++distance) {
    ShadingInput input = randomShading(&random, 300, 1);
    input.settings.previewMode = 0;
    std::vector<uint8_t> results[kInstructionSets];
    for (int32_t set = 0; set <= fasterSets(); ++set) {
      ShadingRun run;
      beginShading(&run, input, static_cast<InstructionSet>(set));
      std::vector<uint8_t>& buffer = results[set];
      buffer.assign(input.source.size() + 16, 0);
      std::copy(input.source.begin(), input.source.end(), buffer.begin() + 8);
      run.fixture.filter.inData = buffer.data() + 8;
      run.fixture.filter.outData = buffer.data() + 8 + distance;
      run.fixture.session->render.currentRow = 0;
      shadeRow(run.fixture.session.get());
      EXPECT_EQ(results[set], results[0]) << distance;
    }
  }
}

// The divisions by a number of the row, over all that settings in their ranges give.
TEST(RowInLanes, DivisionsAreExact) {
  for (int32_t glare = 0; glare <= 100; ++glare) {
    const int32_t width = glare * 3 / 2;
    const int32_t divisor = std::max(width * 75, 1);
    for (int32_t gloss = 0; gloss <= 100; ++gloss) {
      const RowDivision by = scaledDivision(width * width, 5 * gloss, divisor);
      for (int32_t both = 0; both <= width * width; ++both) {
        const uint16_t estimate = upperHalf(static_cast<uint16_t>(both << by.shift), by.multiplier);
        const Lane quotient =
            settledQuotient(estimate, static_cast<uint16_t>(both * 5 * gloss), by.divisor);
        ASSERT_EQ(quotient, both * 5 * gloss / divisor) << glare << ' ' << gloss << ' ' << both;
      }
    }
  }
  // x depth / span, as x of a share rounded down: within one of the quotient, and never beyond it,
  // when the largest x loses less than 1 by that rounding.
  constexpr int32_t kMostArriving = 8400;
  constexpr int32_t kWidestSpan = 21845;
  int32_t tooFar = 0;
  for (int32_t span = 1; span <= kWidestSpan; ++span) {
    const RowDivision by = shareDivision(span);
    for (int32_t depth = 0; depth <= span; ++depth) {
      const int32_t share = upperHalf(static_cast<uint16_t>(depth << by.shift), by.multiplier);
      const int32_t lost = depth * 32768 - share * span;  // of 32768 span
      tooFar += lost < 0 || int64_t{lost} * kMostArriving >= int64_t{span} * 32768 ? 1 : 0;
    }
  }
  EXPECT_EQ(tooFar, 0);
  for (int32_t span = 1; span <= kWidestSpan; span += span < 200 || isLong() ? 1 : 97) {
    const RowDivision by = shareDivision(span);
    for (int32_t depth = 0; depth <= span; depth += 1 + span / 300) {
      const uint16_t share = upperHalf(static_cast<uint16_t>(depth << by.shift), by.multiplier);
      for (int32_t x = 0; x <= kMostArriving; x += 1 + depth % 13) {
        const uint16_t estimate = upperHalf(static_cast<uint16_t>(x << 1), share);
        const Lane quotient =
            settledQuotient(estimate, static_cast<uint16_t>(x * depth), by.divisor);
        ASSERT_EQ(quotient, x * depth / span) << span << ' ' << depth << ' ' << x;
      }
    }
  }
  for (int32_t share = 0; share <= 256; ++share) {
    for (int32_t value = 0; value <= 32767; ++value) {
      ASSERT_EQ(shareOf(static_cast<Lane>(value), share), value * share >> 8);
    }
  }
}
