// shading_runs: the shading pass alone, on a given height field, with any instruction set, and the
// same by the slow twin.

#pragma once

#include <cstdint>
#include <vector>

#include "settings/effect_settings.h"
#include "tests/reference/reference_shading.h"
#include "tests/support/hosts/session_fixture.h"
#include "vector/instruction_sets.h"

struct ShadingInput {
  EffectSettings settings;
  int32_t width;
  int32_t height;
  int32_t planes;               // 1 to 4
  std::vector<uint8_t> source;  // interleaved
  std::vector<uint8_t> mask;    // empty: no mask
  std::vector<int16_t> cells;   // (width + 2) x (height + 2)
  int16_t edgeHeight;
  int32_t depthLow;
};

struct ShadingRun {
  const ShadingInput* input;
  SessionFixture fixture;
  std::vector<uint8_t> output;
};

// Sets a session up for the shading of the input, which has to stay, with no set beyond this one.
void beginShading(ShadingRun* run, const ShadingInput& input, InstructionSet set);

// All rows, from the first, into the output.
void shadeRows(ShadingRun* run);

// What the twin shades from, built once.
struct TwinShading {
  ReferenceField field;
  ReferenceMask mask;
  ReferenceProfile profile;
  ReferenceTables tables;
  std::vector<uint8_t> environment;
};

// Needs a run that has begun: the environment's rip-map is taken from it.
TwinShading twinShading(const ShadingRun& run);
std::vector<uint8_t> shadeByTwin(const ShadingInput& input, const TwinShading& twin);
