// last_settings: what the last confirmed dialog left behind for the user.

#pragma once

#include "hosts/effect_choices/preset_file.h"

// Before the run is cut off from the user. Pictures stand in the settings with their whole paths.
Preset readLastSettings();
