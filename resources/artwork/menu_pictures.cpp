#include "resources/artwork/menu_pictures.h"

#include <algorithm>
#include <cmath>

#include "resources/artwork/drawing/palette.h"
#include "resources/artwork/engine_runs.h"
#include "services/scaling.h"

constexpr int32_t kSide = 32;
constexpr int32_t kSamples = 2;

// The effect is rendered this much larger, for smooth edges; a bevel has a greatest width.
static int32_t finer() {
  return drawnScale() < 200 ? 4 : 3;
}

static int32_t fineSide() {
  return scaledLength(kSide, drawnScale()) * finer();
}

constexpr int32_t kPlainFineSide = 4 * kSide;

// Fine pixels, of lengths that are given in units.
static double fine(double units) {
  return units * fineSide() / kSide;
}

// The same of lengths that are given for the plain scale, in its fine pixels.
static int32_t fineRadius(int32_t pixels) {
  return radiusFor(pixels * fineSide() / kPlainFineSide);
}

// --- Shapes ---------------------------------------------------------------------------------

constexpr double kHalfDisc = 14;    // radius
constexpr double kCut = 18;         // line at which the disc is cut
constexpr double kSectionTop = 21;  // of the section at its highest
constexpr double kSectionBottom = 29;

static Picture litDisc(int32_t shape) {
  EffectSettings settings = smoothSettings();
  settings.shape = shape;
  // The bevel reaches the middle.
  settings.radius = radiusFor(static_cast<int32_t>(fine(kHalfDisc)));
  settings.height = 30;
  settings.gloss = 14;
  settings.glare = 60;
  const Picture source = newPicture(fineSide(), fineSide(), {188, 150, 74});
  const double centre = fineSide() / 2.0;
  const std::vector<uint8_t> coverage =
      coverageOf(discShape(centre, centre, fine(kHalfDisc)), fineSide(), fineSide(), kSamples);
  return reducedPicture(renderedPicture(source, coverage, settings), finer());
}

Picture drawShapePicture(int32_t shape) {
  Picture picture = newScaledPicture(kSide, kSide, kGrooveLight);
  const Picture disc = litDisc(shape);
  const double left = kSide / 2.0 - kHalfDisc;
  const Shape half =
      bothShape(discShape(kSide / 2.0, kCut, kHalfDisc), [](double, double y) { return y < kCut; });
  fillShape(&picture, half, [&disc](double x, double y) {
    const double pixels = static_cast<double>(disc.width) / kSide;
    return pixelAt(disc, static_cast<int32_t>(x * pixels),
                   static_cast<int32_t>((y - kCut + kSide / 2.0) * pixels));
  });
  const std::vector<double> heights = profileHeights(shape);
  const auto surfaceAt = [&](double x) {
    const double inward = std::clamp(std::min(x - left, kSide - left - x) / kHalfDisc, 0.0, 1.0);
    const double height =
        heights[static_cast<size_t>(inward * static_cast<double>(heights.size() - 1))];
    return kSectionBottom - 1 - height * (kSectionBottom - 1 - kSectionTop);
  };
  const auto within = [left](double x) { return x >= left && x <= kSide - left; };
  fillShape(
      &picture,
      [&](double x, double y) { return within(x) && y >= surfaceAt(x) && y <= kSectionBottom; },
      kGraphite);
  fillShape(
      &picture,
      [&](double x, double y) {
        return within(x) && y >= surfaceAt(x) && y <= surfaceAt(x) + 1.1 && y <= kSectionBottom;
      },
      kGold);
  return picture;
}

constexpr double kWantedRange = 190;  // greys of a texture
constexpr double kLargestGain = 2.2;

// --- Textures -------------------------------------------------------------------------------

// A sheet with a folded corner and a landscape on it.
static Picture drawFilePicture() {
  Picture picture = newScaledPicture(kSide, kSide, kDeepPanel);
  fillShape(&picture, polygonShape({{7, 3}, {20, 3}, {26, 9}, {26, 29}, {7, 29}}), kInk);
  fillShape(&picture, polygonShape({{8, 4}, {19.6, 4}, {25, 9.4}, {25, 28}, {8, 28}}), kPaper);
  fillShape(&picture, polygonShape({{19, 3}, {26, 10}, {19, 10}}), kInk);
  fillShape(&picture, polygonShape({{20, 5.4}, {23.6, 9}, {20, 9}}), kGrooveDark);
  fillBox(&picture, {10, 13, 23, 25}, {196, 206, 212});
  fillShape(&picture, discShape(19.5, 16.5, 1.8), kGold);
  fillShape(
      &picture,
      polygonShape({{10, 25}, {10, 22}, {14, 17}, {18, 22}, {19.5, 20.5}, {23, 24}, {23, 25}}),
      kGraphite);
  return picture;
}

// Away from the middle grey of the picture, so that a faint pattern shows at this size.
// Every scale gets what the plain one needs.
static void raiseContrast(Picture* picture, const Picture& plain) {
  const auto [low, high] = std::minmax_element(plain.rgb.begin(), plain.rgb.end());
  const double range = std::max(1, *high - *low);
  const double middle = (*high + *low) / 2.0;
  const double gain = std::clamp(kWantedRange / range, 1.0, kLargestGain);
  for (int32_t y = 0; y < picture->height; ++y) {
    for (int32_t x = 0; x < picture->width; ++x) {
      const double grey = middle + (pixelAt(*picture, x, y).red - middle) * gain;
      setPixel(picture, x, y, {grey, grey, grey});
    }
  }
}

Picture drawTexturePicture(int32_t textureChoice) {
  if (textureChoice == kTextureChoiceFile) return drawFilePicture();
  const Picture texture = generatedTexture(textureChoice);
  // The patterns that are drawn from noise are large; the others repeat finer shapes.
  const int32_t finer = textureChoice == 6 || textureChoice > 8 ? 4 : 2;
  const int32_t side = finer * kSide;
  const Picture part = croppedPicture(texture, {64, 64, 64 + side, 64 + side});
  const Picture plain = reducedPicture(part, finer);
  Picture picture = newScaledPicture(kSide, kSide, kPanel);
  picture.rgb =
      drawnScale() == 100 ? plain.rgb : resampledPicture(part, picture.width, picture.height).rgb;
  raiseContrast(&picture, plain);
  // The smooth surface would vanish on the menu's grey.
  if (textureChoice == kTextureChoiceNone) {
    frameBox(&picture, {0, 0, kSide, kSide}, kGrooveLight, kSoftInk);
  }
  return picture;
}

// --- Blend modes ----------------------------------------------------------------------------

// Light above, dark below, warm on the left and cool on the right: what a mode does to each shows.
static Picture blendSource(int32_t side) {
  Picture picture = newPicture(side, side, kPaper);
  for (int32_t y = 0; y < side; ++y) {
    for (int32_t x = 0; x < side; ++x) {
      const double across = smoothRise(0.35, 0.65, static_cast<double>(x) / side);
      const double down = smoothRise(0.2, 0.8, static_cast<double>(y) / side);
      const Rgb light = mixed({240, 176, 152}, {156, 204, 236}, across);
      const Rgb dark = mixed({132, 30, 36}, {20, 54, 112}, across);
      setPixel(&picture, x, y, mixed(light, dark, down));
    }
  }
  return picture;
}

Picture drawBlendPicture(int32_t blendMode) {
  // Tarnish looks for hollows of single pixels: larger ones would look different.
  const bool isPlain = blendMode == kBlendModeTarnish;
  const int32_t side = isPlain ? kPlainFineSide : fineSide();
  const auto radius = [isPlain](int32_t pixels) { return isPlain ? pixels : fineRadius(pixels); };
  EffectSettings settings = goldSettings();
  settings.reflection = 70;
  settings.gloss = 30;
  settings.blendMode = blendMode;
  settings.shape = 4;
  settings.radius = radius(30);
  settings.height = 60;
  if (blendMode == kBlendModeTarnish) {
    settings.tarnish = 100;
    settings.shape = 9;
    settings.radius = radius(40);
    settings.height = 90;
  }
  if (blendMode == kBlendModeCaustic) {
    settings.glassiness = 100;
    settings.caustic = 100;
    settings.reflection = 0;
    settings.radius = radius(50);
    settings.height = 40;
  }
  const std::vector<uint8_t> coverage =
      coverageOf(discShape(side / 2.0, side / 2.0, 12.5 * side / kSide), side, side, kSamples);
  const Picture rendered = renderedPicture(blendSource(side), coverage, settings);
  if (!isPlain) return reducedPicture(rendered, finer());
  const int32_t shown = scaledLength(kSide, drawnScale());
  return drawnScale() == kPlainScale ? reducedPicture(rendered, 4)
                                     : resampledPicture(rendered, shown, shown);
}
