// reference_shading: lights every pixel, adds what the settings ask for, and composes the result
// with the source picture.

#pragma once

#include <cstdint>
#include <vector>

#include "settings/effect_settings.h"
#include "tests/reference/reference_field.h"
#include "tests/reference/reference_profile_relief.h"
#include "tests/reference/reference_tables.h"

struct ReferenceScene {
  const EffectSettings& settings;
  const ReferenceField& field;
  const ReferenceMask& mask;
  const ReferenceProfile& profile;
  const ReferenceTables& tables;
  const std::vector<uint8_t>& environmentSurface;  // 128 x 128 with its rip-map
  int32_t planes;
  const std::vector<uint8_t>& source;  // interleaved
};

// The finished picture, interleaved like the source. Below 3 planes the picture is grey; a plane
// beyond grey or red, green and blue is copied.
std::vector<uint8_t> referenceShade(const ReferenceScene& scene);

// 0 to 256 for every pixel.
std::vector<int32_t> referenceTarnish(const ReferenceField& field, const EffectSettings& settings);
