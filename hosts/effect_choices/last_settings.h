// last_settings: what the last confirmed dialog left behind for the user. The settings file keeps
// most of it; what it cannot hold is remembered beside it, so that the same picture comes again.

#pragma once

#include <cstdint>
#include <optional>

#include "hosts/effect_choices/preset_file.h"

struct LastSettings {
  Preset preset;  // pictures stand in its settings with their whole paths
  std::optional<uint32_t> seed;
};

// Before the run is cut off from the user.
LastSettings readLastSettings();

// Once a dialog has been confirmed.
void rememberExactly(const EffectSettings& settings);
