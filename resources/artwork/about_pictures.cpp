#include "resources/artwork/about_pictures.h"

#include <algorithm>
#include <cmath>

#include "geometry/field/cone_kernel.h"
#include "resources/artwork/drawing/drawn_letters.h"
#include "resources/artwork/drawing/palette.h"
#include "resources/artwork/drawing/small_letters.h"
#include "resources/artwork/engine_runs.h"
#include "services/scaling.h"

// The effect is rendered this much larger, for smooth edges: for the plain scale, and for all the
// others as large as a bevel's greatest width allows.
constexpr int32_t kPlainFiner = 3;
constexpr int32_t kLargestFiner = 5;
constexpr int32_t kSamples = 2;

static bool isPlain() {
  return drawnScale() == kPlainScale;
}

static int32_t finer() {
  return isPlain() ? kPlainFiner : kLargestFiner;
}

// What is rendered `fineness` times as large as at the plain scale, at its own.
static Picture shown(const Picture& fine, int32_t fineness) {
  if (isPlain()) return reducedPicture(fine, fineness);
  return resampledPicture(fine, scaledLength(fine.width / fineness, drawnScale()),
                          scaledLength(fine.height / fineness, drawnScale()));
}

// --- Shadows --------------------------------------------------------------------------------

static std::vector<double> blurredRows(const std::vector<double>& in, int32_t width, int32_t height,
                                       int32_t reach) {
  std::vector<double> out(in.size());
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      double sum = 0;
      for (int32_t i = -reach; i <= reach; ++i) {
        if (x + i >= 0 && x + i < width) sum += in[static_cast<size_t>(y) * width + x + i];
      }
      // Mirrored on the diagonal, so that a second run blurs the columns.
      out[static_cast<size_t>(x) * height + y] = sum / (2 * reach + 1);
    }
  }
  return out;
}

// Soft, to the lower right, as the light comes from the upper left.
static void throwShadow(Picture* picture, const std::vector<uint8_t>& coverage, int32_t distance,
                        double strength) {
  std::vector<double> shade(coverage.begin(), coverage.end());
  for (int32_t pass = 0; pass < 2; ++pass) {
    shade = blurredRows(shade, picture->width, picture->height, distance);
    shade = blurredRows(shade, picture->height, picture->width, distance);
  }
  for (int32_t y = distance; y < picture->height; ++y) {
    for (int32_t x = distance; x < picture->width; ++x) {
      const size_t from = static_cast<size_t>(y - distance) * picture->width + (x - distance);
      blendPixel(picture, x, y, {60, 50, 36}, strength * shade[from] / 255);
    }
  }
}

// --- Title ----------------------------------------------------------------------------------

Picture drawAboutTitle() {
  constexpr int32_t kTitleFiner = 6;  // steep strokes come out ragged when they are few pixels wide
  constexpr double kUnit = kTitleFiner;
  constexpr int32_t kWidth = 172 * kTitleFiner;
  constexpr int32_t kHeight = 90 * kTitleFiner;
  const double size = 20.5 * kUnit;
  const double left = (kWidth - wordWidth("Morvalis", size)) / 2 - 0.5 * kUnit;
  const Shape word = wordShape("Morvalis", left, 58 * kUnit, size);
  const Shape rule = roundedBoxShape(left - 2 * kUnit, 70 * kUnit, kWidth - left + 2 * kUnit,
                                     73 * kUnit, 1.5 * kUnit);
  const std::vector<uint8_t> coverage = coverageOf(eitherShape(word, rule), kWidth, kHeight, 1);
  Picture picture = newPicture(kWidth, kHeight, kPaper);
  throwShadow(&picture, coverage, 2 * kTitleFiner, 0.38);
  EffectSettings settings = goldSettings();
  settings.radius = 4 * kTitleFiner;
  settings.height = 56;
  settings.reflection = 30;
  raiseObject(&picture, coverage, {206, 158, 62}, settings);
  return shown(picture, kTitleFiner);
}

Picture drawAboutVersion(const std::string& version) {
  Picture picture = newScaledPicture(110, 14, kPaper);
  drawSmallText(&picture, "Version " + version, 0, 1, kInk);
  return picture;
}

// --- Show -----------------------------------------------------------------------------------

// A disc whose rim waves in and out: cos(petals x angle) is the real part of a complex power.
static Shape rosetteShape(double x, double y, double radius, int32_t petals, double depth) {
  return [=](double px, double py) {
    const double dx = px - x;
    const double dy = py - y;
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance > radius) return false;
    if (distance < radius * (1 - 2 * depth)) return true;
    double real = 1;
    double imaginary = 0;
    for (int32_t i = 0; i < petals; ++i) {
      const double turned = (real * -dy - imaginary * dx) / distance;
      imaginary = (real * dx + imaginary * -dy) / distance;
      real = turned;
    }
    return distance <= radius * (1 - depth + depth * real);
  };
}

static void placePiece(Picture* picture, const Shape& shape, Rgb colour,
                       const EffectSettings& settings, int32_t shadow) {
  const std::vector<uint8_t> coverage =
      coverageOf(shape, picture->width, picture->height, kSamples);
  throwShadow(picture, coverage, shadow, 0.45);
  raiseObject(picture, coverage, colour, settings);
}

static EffectSettings ringSettings() {
  EffectSettings settings = goldSettings();
  settings.shape = 9;
  settings.radius = 46;
  settings.height = 66;
  settings.reflection = 66;
  return settings;
}

static EffectSettings filmSettings() {
  EffectSettings settings = smoothSettings();
  settings.radius = 67;
  settings.height = 34;
  settings.light2Color = {0x5000, 0x5000, 0x5000};
  settings.iridescence = 100;
  settings.iriColors = 42;
  settings.gloss = 70;
  settings.glare = 30;
  return settings;
}

static EffectSettings bronzeSettings() {
  EffectSettings settings = goldSettings();
  settings.shape = 12;
  settings.radius = 60;
  settings.height = 44;
  settings.reflection = 30;
  settings.tarnish = 90;
  return settings;
}

static EffectSettings beadSettings(int32_t radius) {
  EffectSettings settings = goldSettings();
  settings.radius = radius;
  settings.height = 52;
  settings.reflection = 35;
  return settings;
}

// The settings give the bevel for the plain fineness.
static EffectSettings atFineness(EffectSettings settings) {
  settings.radius = radiusFor(fullRadius(settings.radius) * finer() / kPlainFiner);
  return settings;
}

Picture drawAboutShow() {
  const int32_t fine = finer();
  Picture picture = newPicture(262 * fine, 152 * fine, kPaper);
  const double middle = 74.0 * fine;
  const double centre = 131.0 * fine;
  const Shape rosette = rosetteShape(centre, middle, 62.0 * fine, 12, 0.07);
  const Shape beyondHole = ringShape(centre, middle, 29.0 * fine, 70.0 * fine);
  placePiece(&picture, bothShape(rosette, beyondHole), {214, 166, 72}, atFineness(ringSettings()),
             3 * fine);
  placePiece(&picture, discShape(centre, middle, 17.0 * fine), {214, 166, 72},
             atFineness(beadSettings(50)), 3 * fine);
  placePiece(&picture, discShape(36.0 * fine, middle, 28.0 * fine), {206, 208, 212},
             atFineness(filmSettings()), 3 * fine);
  placePiece(&picture, rosetteShape(226.0 * fine, middle, 30.0 * fine, 5, 0.12), {188, 122, 74},
             atFineness(bronzeSettings()), 3 * fine);
  return shown(picture, fine);
}

Picture drawAboutMark() {
  constexpr int32_t kMarkFiner = 6;
  constexpr int32_t kSide = 18 * kMarkFiner;
  Picture picture = newPicture(kSide, kSide, kPaper);
  placePiece(&picture, discShape(8.5 * kMarkFiner, 8.5 * kMarkFiner, 6.5 * kMarkFiner),
             {214, 166, 72}, beadSettings(39), 3 * kPlainFiner);
  return shown(picture, kMarkFiner);
}
