#include "shading/iridescence_table.h"

#include <cmath>

#include "entry/session_record.h"
#include "services/fixed_point.h"

constexpr double kDegreesPerRadian = 57.295779524;
constexpr double kFullTurn = 6.283185307179586;
constexpr float kThicknessPerStep = 20;  // nanometres

// The light's path through the film at a slope of so many degrees, in nanometres.
static float opticalPath(int32_t degrees, float thickness) {
  const auto angle = static_cast<float>(degrees / kDegreesPerRadian);
  const double squared = static_cast<float>(thickness * thickness);
  const double sine = std::sin(static_cast<double>(angle));
  const double cosine = std::cos(static_cast<double>(angle));
  return static_cast<float>(std::pow(squared * sine / cosine + squared, 0.5));
}

static int32_t addShare(int32_t sum, int32_t amount, float factor) {
  return truncateToInt32(sum + amount * static_cast<double>(factor));
}

// Sum of the spectrum, each wavelength weakened (0) or doubled (2) by interference.
static Rgb32 interference(const ShadingTables& tables, float path) {
  Rgb32 sum = {};
  for (int32_t k = 0; k < kSpectrumEntries; ++k) {
    const double wavelength = 380 + 5 * k;
    const auto factor = static_cast<float>(std::cos(path / wavelength * kFullTurn) + 1.0);
    const Rgb32& colour = tables.iridescenceSpectrum[k];
    sum.red = addShare(sum.red, colour.red, factor);
    sum.green = addShare(sum.green, colour.green, factor);
    sum.blue = addShare(sum.blue, colour.blue, factor);
  }
  return sum;
}

void buildIridescenceTable(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  ShadingTables* tables = &session->shading;
  const Word32 base = (Word32(100) - settings->iridescence) * 256 / 100;
  const Word32 rest = Word32(256) - base;
  const auto thickness = static_cast<float>(settings->iriColors) * kThicknessPerStep;
  const Rgb32& whole = tables->iridescenceSums;
  for (int32_t slope = 0; slope < kIridescenceEntries; ++slope) {
    const Rgb32 sum = interference(*tables, opticalPath(slope, thickness));
    tables->iridescence[slope] = {(base + rest * sum.red / whole.red).value,
                                  (base + rest * sum.green / whole.green).value,
                                  (base + rest * sum.blue / whole.blue).value};
  }
}
