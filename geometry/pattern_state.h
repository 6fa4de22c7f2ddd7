// pattern_state: what the set-up of a built-in texture leaves for its row generator.

#pragma once

#include <cstdint>

constexpr int32_t kTextureSide = 256;  // texels
constexpr int32_t kToneEntries = 256;
constexpr int32_t kJitterEntries = 1025;
constexpr int32_t kRootEntries = 2148;
constexpr int32_t kNoiseEntries = 2048;

// Pattern types, the first generator parameter.
constexpr uint32_t kPatternFlat = 0;
constexpr uint32_t kPatternWalk = 1;
constexpr uint32_t kPatternCells = 6;
constexpr uint32_t kPatternCobbles = 7;
constexpr uint32_t kPatternNoise = 9;
constexpr uint32_t kPatternStripes = 10;

struct PatternState {
  int32_t textureRow;  // 0 to 255
  int32_t toneTable[kToneEntries];
  int32_t walkStep;
  int32_t walkScale;
  int32_t walkPrevious;
  int16_t walkMemory[kTextureSide];  // each column's value in the previous row
  int32_t cellShift;
  int16_t jitterTable[kJitterEntries];  // 0 to 27
  int16_t rootTable[kRootEntries];
  int16_t noiseTable[kNoiseEntries];  // 0 to 255
  int32_t noiseFloor;
  int32_t noiseStripe;
};
