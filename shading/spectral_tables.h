// spectral_tables: what is built once per session: the reflection angles and visible light as RGB,
// in the two forms that iridescence and caustic light need.

#pragma once

#include <cstdint>

struct SessionRecord;

constexpr int32_t kIridescenceSpectrum = 0;
constexpr int32_t kCausticSpectrum = 1;

// Fills the three tables unless they are there.
void buildSessionTables(SessionRecord* session);

void buildSpectrum(SessionRecord* session, int32_t which);

struct RgbSingle {
  float red;
  float green;
  float blue;
};

// The amounts of the three primaries that add up to the chromaticity (x, y, z), none below 0.
RgbSingle chromaticityToRgb(float xr, float yr, float zr, float xg, float yg, float zg, float xb,
                            float yb, float zb, float x, float y, float z);
