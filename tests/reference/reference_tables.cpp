#include "tests/reference/reference_tables.h"

#include <cmath>

namespace {

constexpr double kDegrees = 57.295779524;
constexpr int32_t kWavelengths = 81;
constexpr double kBrightness = 185.0;

struct Chromaticity {
  float x;
  float y;
};

// CIE 1931 2-degree standard observer, 380 to 780 nm in steps of 5.
// clang-format off
constexpr Chromaticity kObserver[kWavelengths] = {
    {0.1741F, 0.0050F}, {0.1740F, 0.0050F}, {0.1738F, 0.0049F}, {0.1736F, 0.0049F},
    {0.1733F, 0.0048F}, {0.1730F, 0.0048F}, {0.1726F, 0.0048F}, {0.1721F, 0.0048F},
    {0.1714F, 0.0051F}, {0.1703F, 0.0058F}, {0.1689F, 0.0069F}, {0.1669F, 0.0086F},
    {0.1644F, 0.0109F}, {0.1611F, 0.0138F}, {0.1566F, 0.0177F}, {0.1510F, 0.0227F},
    {0.1440F, 0.0297F}, {0.1355F, 0.0399F}, {0.1241F, 0.0578F}, {0.1096F, 0.0868F},
    {0.0913F, 0.1327F}, {0.0687F, 0.2007F}, {0.0454F, 0.2950F}, {0.0235F, 0.4127F},
    {0.0082F, 0.5384F}, {0.0039F, 0.6548F}, {0.0139F, 0.7502F}, {0.0389F, 0.8120F},
    {0.0743F, 0.8338F}, {0.1142F, 0.8262F}, {0.1547F, 0.8059F}, {0.1929F, 0.7816F},
    {0.2296F, 0.7543F}, {0.2658F, 0.7243F}, {0.3016F, 0.6923F}, {0.3373F, 0.6589F},
    {0.3731F, 0.6245F}, {0.4087F, 0.5896F}, {0.4441F, 0.5547F}, {0.4788F, 0.5202F},
    {0.5125F, 0.4866F}, {0.5448F, 0.4544F}, {0.5752F, 0.4242F}, {0.6029F, 0.3965F},
    {0.6270F, 0.3725F}, {0.6482F, 0.3514F}, {0.6658F, 0.3340F}, {0.6801F, 0.3197F},
    {0.6915F, 0.3083F}, {0.7006F, 0.2993F}, {0.7079F, 0.2920F}, {0.7140F, 0.2859F},
    {0.7190F, 0.2809F}, {0.7230F, 0.2770F}, {0.7260F, 0.2740F}, {0.7283F, 0.2717F},
    {0.7300F, 0.2700F}, {0.7311F, 0.2689F}, {0.7320F, 0.2680F}, {0.7327F, 0.2673F},
    {0.7334F, 0.2666F}, {0.7340F, 0.2660F}, {0.7344F, 0.2656F}, {0.7346F, 0.2654F},
    {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F},
    {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F},
    {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F},
    {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F}, {0.7347F, 0.2653F},
    {0.7347F, 0.2653F},
};
// clang-format on

struct FloatColor {
  float red;
  float green;
  float blue;
};

float atLeastZero(double value) {
  const float single = static_cast<float>(value);
  return single >= 0.0F ? single : 0.0F;
}

// Cramer's rule on the primaries' matrix.
FloatColor chromaticityToRgb(float redX, float redY, float redZ, float greenX, float greenY,
                             float greenZ, float blueX, float blueY, float blueZ, float pointX,
                             float pointY, float pointZ) {
  const double xr = redX, yr = redY, zr = redZ;
  const double xg = greenX, yg = greenY, zg = greenZ;
  const double xb = blueX, yb = blueY, zb = blueZ;
  const double x = pointX, y = pointY, z = pointZ;
  const double d =
      xr * yg * zb - xg * yr * zb - xr * yb * zg + xb * yr * zg + xg * yb * zr - xb * yg * zr;
  const double r =
      (-xg * y * zb + x * yg * zb + xg * yb * z - xb * yg * z - x * yb * zg + xb * y * zg) / d;
  const double g =
      (xr * y * zb - x * yr * zb - xr * yb * z + xb * yr * z + x * yb * zr - xb * y * zr) / d;
  const double b =
      (xr * yg * z - xg * yr * z - xr * y * zg + x * yr * zg + xg * y * zr - x * yg * zr) / d;
  return {atLeastZero(r), atLeastZero(g), atLeastZero(b)};
}

float zOfPrimary(float x, float y) {
  return 1.0F - (x + y);
}

enum class Spectrum { iridescence, caustic };

std::array<ReferenceColor, kWavelengths> buildSpectrum(Spectrum which) {
  const bool caustic = which == Spectrum::caustic;
  const float xr = 0.64F, yr = 0.33F, xg = 0.29F, yg = 0.60F, xb = 0.15F, yb = 0.06F;
  const double e = caustic ? 0.3 : 0.45;
  std::array<ReferenceColor, kWavelengths> spectrum{};
  for (int32_t k = 0; k < kWavelengths; ++k) {
    const int32_t wavelength = 380 + 5 * k;
    const float x = kObserver[k].x;
    const float y = kObserver[k].y;
    const float z = static_cast<float>(1 - (static_cast<double>(x) + static_cast<double>(y)));
    const FloatColor color =
        chromaticityToRgb(xr, yr, zOfPrimary(xr, yr), xg, yg, zOfPrimary(xg, yg), xb, yb,
                          zOfPrimary(xb, yb), x, y, z);
    double w = 1.0;
    double m = 1.0;
    double redExponent = e;
    if (caustic) {
      if (wavelength > 600) m = (780 - wavelength) / 180.0;
      if (wavelength < 440) m = (wavelength - 380) / 60.0;
      redExponent = 0.1;
      if (wavelength < 500) redExponent = 0.1 + 0.2 * (500 - wavelength) / 120;
    } else {
      if (wavelength > 700) w = 0.1 + 0.9 * (780 - wavelength) / 80;
      if (wavelength < 420) w = 0.1 + 0.9 * (wavelength - 380) / 40;
    }
    spectrum[k] = {static_cast<int32_t>(std::pow(w * color.red, redExponent) * (m * kBrightness)),
                   static_cast<int32_t>(std::pow(w * color.green, e) * (m * kBrightness)),
                   static_cast<int32_t>(std::pow(w * color.blue, e) * (m * kBrightness))};
  }
  return spectrum;
}

// Each entry the mean of the twelve raw entries before it, as far as they exist.
std::array<ReferenceColor, 93> smoothedSpectrum(
    const std::array<ReferenceColor, kWavelengths>& raw) {
  std::array<ReferenceColor, 93> smoothed{};
  for (int32_t i = 0; i <= 92; ++i) {
    for (int32_t c = 0; c < 3; ++c) {
      int32_t sum = 0;
      for (int32_t n = i - 12; n <= i - 1; ++n) {
        if (n >= 0 && n <= 80) sum += raw[n][c];
      }
      smoothed[i][c] = sum / 12;
    }
  }
  return smoothed;
}

void buildIridescence(ReferenceTables& tables, const EffectSettings& settings) {
  const int32_t base = ((100 - settings.iridescence) * 256) / 100;
  const float t = static_cast<float>(settings.iriColors * 20);
  const float t2 = t * t;
  for (int32_t a = 0; a < 90; ++a) {
    const float theta = static_cast<float>(a / kDegrees);
    const double sine = std::sin(static_cast<double>(theta));
    const double cosine = std::cos(static_cast<double>(theta));
    const float path = static_cast<float>(std::pow(t2 * sine / cosine + t2, 0.5));
    ReferenceColor sums = {0, 0, 0};
    for (int32_t k = 0; k < kWavelengths; ++k) {
      const float wavelength = static_cast<float>(380 + 5 * k);
      const double waves = static_cast<double>(path) / static_cast<double>(wavelength);
      const float f = static_cast<float>(std::cos(waves * 6.283185307179586) + 1.0);
      for (int32_t c = 0; c < 3; ++c) {
        sums[c] = static_cast<int32_t>(sums[c] +
                                       tables.iridescenceSpectrum[k][c] * static_cast<double>(f));
      }
    }
    for (int32_t c = 0; c < 3; ++c) {
      tables.iridescence[a][c] = base + ((256 - base) * sums[c]) / tables.spectrumSums[c];
    }
  }
}

}  // namespace

ReferenceLight referenceLight(const Direction& direction) {
  const int32_t h = static_cast<int32_t>(33 * static_cast<double>(direction.x));
  const int32_t v = static_cast<int32_t>(33 * static_cast<double>(direction.y));
  int32_t compass = 0;
  if (v == 0) {
    if (h < 0) compass = 270;
    if (h > 0) compass = 90;
  } else {
    const float quotient = static_cast<float>(h * 66) / static_cast<float>(-v * 66);
    double degrees = std::atan(static_cast<double>(quotient)) * 57.29577951308232;
    if (-v * 66 < 1) degrees += 180;
    compass = static_cast<int32_t>(degrees);
    if (compass < 0) compass += 360;
  }
  return {compass - 90, static_cast<int32_t>((1 - static_cast<double>(direction.z)) * 600)};
}

ReferenceStencil referenceStencil(int32_t angle) {
  const int32_t a = (angle + 281) % 360;
  const int32_t q = (2 * a) / 45;
  constexpr int32_t kMultiples[4][4] = {{0, -2, 0, 2}, {0, -2, 1, 1}, {0, -2, 2, 0}, {1, -2, 1, 0}};
  constexpr float kScales[4] = {1.0F, 0.934F, 0.7071F, 0.934F};
  const float scale = static_cast<float>(kScales[q % 4] * 322.56);
  ReferenceStencil w{};
  for (int32_t n = 0; n < 4; ++n) {
    w[n] = static_cast<int32_t>(kMultiples[q % 4][n] * static_cast<double>(scale));
  }
  for (int32_t turn = 0; turn < q / 4; ++turn) w = {-w[1], -w[3], -w[0], -w[2]};
  return w;
}

ReferenceTables referenceTables(const EffectSettings& settings) {
  ReferenceTables tables{};
  tables.lights = {referenceLight(settings.light1Dir), referenceLight(settings.light2Dir)};
  tables.stencils[kReferenceMain1] = referenceStencil(tables.lights[0].angle);
  tables.stencils[kReferenceSide1] = referenceStencil(tables.lights[0].angle + 315);
  tables.stencils[kReferenceCaustic1] = referenceStencil(tables.lights[0].angle + 90);
  tables.stencils[kReferenceMain2] = referenceStencil(tables.lights[1].angle);
  tables.stencils[kReferenceSide2] = referenceStencil(tables.lights[1].angle + 315);
  tables.stencils[kReferenceCaustic2] = referenceStencil(tables.lights[1].angle + 90);

  for (int32_t i = 0; i < 2000; ++i) {
    const double ratio = i * static_cast<double>(0.010782459F);
    tables.reflectionAngle[i] = static_cast<int32_t>(std::atan(ratio) * 512.0);
  }

  tables.iridescenceSpectrum = buildSpectrum(Spectrum::iridescence);
  for (const ReferenceColor& color : tables.iridescenceSpectrum) {
    for (int32_t c = 0; c < 3; ++c) tables.spectrumSums[c] += 2 * color[c];
  }
  tables.causticSpectrum = smoothedSpectrum(buildSpectrum(Spectrum::caustic));
  buildIridescence(tables, settings);

  tables.ripOffsets = {0, 64, 96, 112, 120, 124, 126};
  for (int32_t change = 0; change <= 64; ++change) {
    int32_t level = 0;
    if (change >= 2) level = 1;
    if (change >= 3) level = 2;
    if (change >= 6) level = 3;
    if (change >= 12) level = 4;
    if (change >= 23) level = 5;
    if (change >= 46) level = 6;
    tables.ripLevels[change] = level;
  }
  tables.reflectWeight = (settings.reflection * 256) / 100;
  tables.reflectRest = 256 - tables.reflectWeight;
  for (int32_t v = 0; v < 256; ++v) tables.proceduralWeight[v] = v <= 127 ? 2 * v : 511 - 2 * v;
  tables.causticColors = tables.causticSpectrum;
  if (settings.iriTableChoice == 1) {
    for (int32_t i = 0; i <= 92; ++i) {
      const int32_t grey = i * (92 - i) / 18;
      tables.causticColors[i] = {grey, grey, grey};
    }
  }
  return tables;
}
