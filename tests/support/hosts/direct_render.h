// direct_render: the product's row machine without a host: picture and selection are handed over
// whole, so that tests can look at the height field between the passes.

#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "entry/session_record.h"
#include "settings/effect_settings.h"

struct DirectInput {
  EffectSettings settings;
  int32_t width;
  int32_t height;
  int32_t planes;
  std::vector<uint8_t> source;       // interleaved
  std::vector<uint8_t> mask;         // empty: no mask
  std::vector<uint8_t> environment;  // 64 x 64 x 3; empty: the built-in one
  std::vector<uint8_t> texture;      // grey, for textureChoice 13; empty: no file
  int32_t textureWidth;
  int32_t textureHeight;
  uint32_t seed;
};

struct DirectOutput {
  std::vector<uint8_t> effect;
  int32_t steps;
  double seconds;      // of processor time, without the copying of input and output
  double longestStep;  // seconds
};

// Called after the last row of each phase but the shading, with the phase that has ended.
using PhaseWatcher = std::function<void(const SessionRecord& session, int32_t phase)>;

// Renders with previewMode and previewScale as the settings have them.
DirectOutput renderDirectly(const DirectInput& input, const PhaseWatcher& watcher = nullptr);

// The settings that a fresh block gets.
EffectSettings defaultSettings();
