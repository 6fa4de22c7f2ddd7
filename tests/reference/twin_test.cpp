// The product against its slow twin, byte for byte, on generated renders: the height field after
// every pass and the finished pixels.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <set>

#include "tests/reference/reference_render.h"
#include "tests/support/random_inputs.h"
#include "vector/instruction_sets.h"

static ReferenceInput referenceInput(const DirectInput& input) {
  return {input.settings,     input.width,         input.height,      input.planes,
          input.source,       input.mask,          input.environment, input.texture,
          input.textureWidth, input.textureHeight, input.seed};
}

static const ReferenceField& fieldAfter(const ReferenceOutput& output, int32_t phase) {
  switch (phase) {
    case kPhaseStamp:
      return output.afterStamping;
    case kPhaseBorder:
      return output.afterBorder;
    case kPhaseSmoothForward:
      return output.afterForward;
    case kPhaseSmoothBackward:
      return output.afterBackward;
    default:
      return output.afterRelief;
  }
}

static void compareField(const SessionRecord& session, const ReferenceField& expected,
                         int32_t phase) {
  // Without stamps the field says what it should only when both of its passes are through.
  if (phase == kPhaseStamp && session.render.fastField.inUse != 0) return;
  const auto* cells = static_cast<const int16_t*>(session.render.heightField.address);
  for (size_t i = 0; i < expected.cells.size(); ++i) {
    ASSERT_EQ(cells[i], expected.cells[i])
        << "after phase " << phase << ", cell " << i % expected.columns << ", row "
        << i / expected.columns;
  }
}

// Calls run() once with each instruction set, the plain form first.
template <typename Run>
static void byEverySet(Run run) {
  const InstructionSet before = chosenInstructionSet();
  for (int32_t i = 0; i <= static_cast<int32_t>(bestInstructionSet()); ++i) {
    limitInstructionSet(static_cast<InstructionSet>(i));
    SCOPED_TRACE(instructionSetName(static_cast<InstructionSet>(i)));
    run();
  }
  limitInstructionSet(before);
}

static void compareWithTwin(const DirectInput& input) {
  const ReferenceOutput expected = referenceRender(referenceInput(input));
  EXPECT_EQ(expected.intermediatesBeyond32Bits, 0) << "32 bits do not suffice";
  byEverySet([&] {
    const DirectOutput actual =
        renderDirectly(input, [&](const SessionRecord& session, int32_t phase) {
          compareField(session, fieldAfter(expected, phase), phase);
        });
    ASSERT_EQ(actual.effect.size(), expected.effect.size());
    for (size_t i = 0; i < actual.effect.size(); ++i) {
      ASSERT_EQ(actual.effect[i], expected.effect[i]) << "sample " << i;
    }
  });
}

static std::string describe(const DirectInput& input) {
  return std::to_string(input.width) + " x " + std::to_string(input.height) + ", " +
         std::to_string(input.planes) + " planes, radius " + std::to_string(input.settings.radius) +
         ", shape " + std::to_string(input.settings.shape) + ", texture " +
         std::to_string(input.settings.textureChoice) + ", preview " +
         std::to_string(input.settings.previewMode) + " / " +
         std::to_string(input.settings.previewScale);
}

TEST(Twin, GeneratedRenders) {
  TestRandom random = {20240607};
  std::set<int32_t> shapes;
  std::set<int32_t> textures;
  std::set<int32_t> modes;
  const int32_t kRenders = std::getenv("MORVALIS_LONG") != nullptr ? 4000 : 400;
  for (int32_t i = 0; i < kRenders && !::testing::Test::HasFailure(); ++i) {
    const int32_t width = i % 7 == 0 ? 1 : randomBetween(&random, 1, 41);
    const int32_t height = i % 11 == 0 ? 1 : randomBetween(&random, 1, 37);
    const DirectInput input = randomInput(&random, width, height);
    shapes.insert(input.settings.shape);
    textures.insert(input.settings.textureChoice);
    modes.insert(input.settings.blendMode);
    SCOPED_TRACE("render " + std::to_string(i) + ": " + describe(input));
    compareWithTwin(input);
  }
  EXPECT_EQ(shapes.size(), 13U);
  EXPECT_EQ(textures.size(), 13U);
  EXPECT_EQ(modes.size(), 12U);
}

// Wider than the words that the row memories would share if they had fixed places.
TEST(Twin, WideRenders) {
  TestRandom random = {77};
  for (int32_t width : {2175, 2177, 2179, 2300, 11000}) {
    DirectInput input = randomInput(&random, width, 2);
    input.settings.radius = std::min(input.settings.radius, 20);
    input.settings.tarnish = 80;
    input.settings.reflection = 60;
    SCOPED_TRACE(describe(input));
    compareWithTwin(input);
  }
}

// The steepest surfaces that settings within their ranges give: nothing leaves 32 bits.
TEST(Twin, SteepestSurfaces) {
  TestRandom random = {5};
  for (int32_t shape = 1; shape <= kShapeCount; ++shape) {
    for (int32_t turn = 0; turn < 4; ++turn) {
      DirectInput input = randomInput(&random, 24, 20);
      EffectSettings& settings = input.settings;
      settings.shape = shape;
      settings.height = turn < 2 ? 100 : -100;
      settings.radius = turn % 2 == 0 ? 100 : 2;
      settings.texture = turn < 2 ? 100 : -100;
      settings.textureScale = turn % 2 == 0 ? 100 : 0;
      settings.textureChoice = 7 + turn;
      settings.gloss = settings.glare = settings.glassiness = settings.caustic = 100;
      settings.reflection = turn % 2 == 0 ? 0 : 100;
      settings.tarnish = 100;
      settings.light1Color = settings.light2Color = {65535, 65535, 65535};
      SCOPED_TRACE("shape " + std::to_string(shape) + ", turn " + std::to_string(turn));
      compareWithTwin(input);
    }
  }
}

// A host may write into the settings while a render is under way. What comes out then is nobody's
// concern, but it is the same by every set, and nothing is read or written beyond its place.
TEST(Twin, SettingsThatChangeMidway) {
  constexpr int32_t EffectSettings::*kFields[] = {
      &EffectSettings::textureWidth, &EffectSettings::textureHeight, &EffectSettings::previewScale,
      &EffectSettings::textureScale, &EffectSettings::texture,       &EffectSettings::height,
      &EffectSettings::shape,        &EffectSettings::blendMode,     &EffectSettings::reflection,
      &EffectSettings::gloss,        &EffectSettings::tarnish,       &EffectSettings::caustic};
  constexpr int32_t kValues[] = {INT32_MIN, -1, 0, 20, 300, 5000, 40000, INT32_MAX};
  TestRandom random = {31};
  for (int32_t i = 0; i < 240 && !::testing::Test::HasFailure(); ++i) {
    const DirectInput input = randomInput(&random, randomBetween(&random, 2, 40), 30);
    const auto field = kFields[i % static_cast<int32_t>(std::size(kFields))];
    const int32_t value = kValues[randomBetween(&random, 0, 7)];
    const int32_t when = randomBetween(&random, kPhaseStamp, kPhaseProfile);
    SCOPED_TRACE("render " + std::to_string(i) + ": " + describe(input));
    std::vector<uint8_t> plain;
    byEverySet([&] {
      const DirectOutput output =
          renderDirectly(input, [&](const SessionRecord& session, int32_t phase) {
            if (phase == when) session.settings->*field = value;
          });
      if (plain.empty()) plain = output.effect;
      EXPECT_EQ(output.effect, plain)
          << "field " << i % std::size(kFields) << " " << value << " after phase " << when;
    });
  }
}
