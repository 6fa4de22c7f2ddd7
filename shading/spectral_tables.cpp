#include "shading/spectral_tables.h"

#include <algorithm>
#include <cmath>

#include "entry/session_record.h"
#include "services/fixed_point.h"
#include "shading/cie_chromaticity.h"

constexpr float kAnglePerStep = 0.010782459F;  // slope of a height difference of 1
constexpr double kAngleScale = 512;

constexpr int32_t kFirstWavelength = 380;  // nanometres
constexpr int32_t kWavelengthStep = 5;
constexpr double kBrightness = 185;
constexpr int32_t kSmoothing = 12;  // raw caustic entries averaged into one

// The colour system: three primaries by chromaticity.
constexpr float kRedX = 0.64F;
constexpr float kRedY = 0.33F;
constexpr float kGreenX = 0.29F;
constexpr float kGreenY = 0.60F;
constexpr float kBlueX = 0.15F;
constexpr float kBlueY = 0.06F;

void buildSessionTables(SessionRecord* session) {
  ShadingTables* tables = &session->shading;
  if (tables->tablesBuilt == 1) return;
  for (int32_t i = 0; i < kAngleEntries; ++i) {
    const double slope = static_cast<double>(i) * kAnglePerStep;
    tables->reflectionAngle[i] = truncateToInt32(std::atan(slope) * kAngleScale);
  }
  buildSpectrum(session, kIridescenceSpectrum);
  buildSpectrum(session, kCausticSpectrum);
  tables->tablesBuilt = 1;
}

static float notNegative(double value) {
  return value >= 0 ? static_cast<float>(value) : 0.0F;
}

RgbSingle chromaticityToRgb(float xrs, float yrs, float zrs, float xgs, float ygs, float zgs,
                            float xbs, float ybs, float zbs, float xs, float ys, float zs) {
  const double xr = xrs, yr = yrs, zr = zrs;
  const double xg = xgs, yg = ygs, zg = zgs;
  const double xb = xbs, yb = ybs, zb = zbs;
  const double x = xs, y = ys, z = zs;
  // Cramer's rule.
  const double d =
      xr * yg * zb - xg * yr * zb - xr * yb * zg + xb * yr * zg + xg * yb * zr - xb * yg * zr;
  const double r =
      (-xg * y * zb + x * yg * zb + xg * yb * z - xb * yg * z - x * yb * zg + xb * y * zg) / d;
  const double g =
      (xr * y * zb - x * yr * zb - xr * yb * z + xb * yr * z + x * yb * zr - xb * y * zr) / d;
  const double b =
      (xr * yg * z - xg * yr * z - xr * y * zg + x * yr * zg + xg * y * zr - x * yg * zr) / d;
  return {notNegative(r), notNegative(g), notNegative(b)};
}

static float thirdCoordinate(float x, float y) {
  return static_cast<float>(1.0 - (static_cast<double>(x) + y));
}

static RgbSingle wavelengthRgb(int32_t k) {
  const Chromaticity& c = kCieChromaticity[k];
  return chromaticityToRgb(kRedX, kRedY, thirdCoordinate(kRedX, kRedY), kGreenX, kGreenY,
                           thirdCoordinate(kGreenX, kGreenY), kBlueX, kBlueY,
                           thirdCoordinate(kBlueX, kBlueY), c.x, c.y, thirdCoordinate(c.x, c.y));
}

static int32_t brightened(double amount, double exponent, double amplitude) {
  return truncateToInt32(std::pow(amount, exponent) * (amplitude * kBrightness));
}

// Both ends of the spectrum fade, as the eye's response does.
static Rgb32 iridescenceColour(int32_t k) {
  constexpr double exponent = 0.45;
  const int32_t wavelength = kFirstWavelength + kWavelengthStep * k;
  double weight = 1;
  if (wavelength > 700) weight = 0.1 + 0.9 * (780 - wavelength) / 80;
  if (wavelength < 420) weight = 0.1 + 0.9 * (wavelength - 380) / 40;
  const RgbSingle rgb = wavelengthRgb(k);
  return {brightened(weight * rgb.red, exponent, 1), brightened(weight * rgb.green, exponent, 1),
          brightened(weight * rgb.blue, exponent, 1)};
}

static Rgb32 causticColour(int32_t k) {
  constexpr double exponent = 0.3;
  const int32_t wavelength = kFirstWavelength + kWavelengthStep * k;
  double amplitude = 1;
  if (wavelength > 600) amplitude = (780 - wavelength) / 180.0;
  if (wavelength < 440) amplitude = (wavelength - 380) / 60.0;
  const double redExponent = wavelength < 500 ? 0.1 + 0.2 * (500 - wavelength) / 120 : 0.1;
  const RgbSingle rgb = wavelengthRgb(k);
  return {brightened(rgb.red, redExponent, amplitude), brightened(rgb.green, exponent, amplitude),
          brightened(rgb.blue, exponent, amplitude)};
}

static void buildIridescenceSpectrum(ShadingTables* tables) {
  tables->iridescenceSums = {};
  for (int32_t k = 0; k < kSpectrumEntries; ++k) {
    const Rgb32 colour = iridescenceColour(k);
    tables->iridescenceSpectrum[k] = colour;
    tables->iridescenceSums.red += 2 * colour.red;
    tables->iridescenceSums.green += 2 * colour.green;
    tables->iridescenceSums.blue += 2 * colour.blue;
  }
}

static void buildCausticSpectrum(ShadingTables* tables) {
  Rgb32 raw[kSpectrumEntries];
  for (int32_t k = 0; k < kSpectrumEntries; ++k) raw[k] = causticColour(k);
  for (int32_t i = 0; i < kCausticEntries; ++i) {
    Rgb32 sum = {};
    for (int32_t k = std::max(i - kSmoothing, 0); k < std::min(i, kSpectrumEntries); ++k) {
      sum.red += raw[k].red;
      sum.green += raw[k].green;
      sum.blue += raw[k].blue;
    }
    tables->causticSpectrum[i] = {sum.red / kSmoothing, sum.green / kSmoothing,
                                  sum.blue / kSmoothing};
  }
}

void buildSpectrum(SessionRecord* session, int32_t which) {
  if (which == kIridescenceSpectrum) {
    buildIridescenceSpectrum(&session->shading);
  } else {
    buildCausticSpectrum(&session->shading);
  }
}
