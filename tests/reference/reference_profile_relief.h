// reference_profile_relief: turns closeness to the edge into heights through a bevel profile, and
// presses the texture into them.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "settings/effect_settings.h"
#include "tests/reference/reference_field.h"

struct ReferenceProfile {
  std::array<int16_t, 3001> heights;  // by closeness to the edge, scaled
  int32_t depthLow;                   // the smallest negated entry, scaled like the table
};

// A shape outside 1 to 13 gives a flat profile.
ReferenceProfile referenceProfile(const EffectSettings& settings);

void referenceMapProfile(ReferenceField& field, const ReferenceProfile& profile);

// Texels per picture column, in hundredths: 1600 at the scale 0, 12 at 100.
int32_t referenceTextureScaleFactor(const EffectSettings& settings);

// `table` holds 256 x 256 texels, 255 minus the texture picture's green.
void referenceRelief(ReferenceField& field, const EffectSettings& settings,
                     const std::vector<uint8_t>& table, int32_t textureWidth,
                     int32_t textureHeight);
