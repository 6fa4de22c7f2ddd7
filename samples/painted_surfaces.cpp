#include "samples/painted_surfaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "samples/value_noise.h"

namespace {

struct Tone {  // 0 to 1 each
  double red;
  double green;
  double blue;
};

Tone mixed(const Tone& a, const Tone& b, double share) {
  return {std::lerp(a.red, b.red, share), std::lerp(a.green, b.green, share),
          std::lerp(a.blue, b.blue, share)};
}

Tone scaled(const Tone& a, double factor) {
  return {a.red * factor, a.green * factor, a.blue * factor};
}

int sampleOf(double value) {
  return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

QRgb pixelOf(const Tone& tone) {
  return qRgb(sampleOf(tone.red), sampleOf(tone.green), sampleOf(tone.blue));
}

// A colour for every position from 0 to 1, in steps of equal width.
template <size_t count>
Tone onScale(const std::array<Tone, count>& scale, double position) {
  const double place = std::clamp(position, 0.0, 1.0) * (count - 1);
  const size_t below = std::min(static_cast<size_t>(place), count - 2);
  return mixed(scale[below], scale[below + 1], place - static_cast<double>(below));
}

// Brightness of a surface under a lamp at the upper left; x and y from 0 to 1.
double lampLight(double x, double y) {
  const double distance = std::hypot((x - 0.34) * 1.15, y - 0.28);
  return 0.62 + 0.62 * std::exp(-distance * distance * 2.6);
}

// --- Boards -----------------------------------------------------------------------------------

constexpr double kBoardHeight = 132;  // pixels
constexpr uint32_t kBoardSeed = 4711;

struct BoardPoint {
  double grain;  // 0 early wood to 1 late wood
  double knot;   // 0 to 1
  double fibre;  // 0 to 1
};

// The grain is the cut through a trunk: rings at even distances, bent by noise and by knots.
BoardPoint boardPoint(double x, double y, int32_t board) {
  const auto seed = kBoardSeed + static_cast<uint32_t>(board) * 97U;
  const double middle = (randomOf(board, 11) - 0.5) * 1.6 * kBoardHeight;
  double radius = 0.021 * std::hypot(y - middle, 90.0) * 4 +
                  5.5 * layeredNoise(x * 0.0021, y * 0.011, 4, seed) + 0.0012 * x;
  double knot = 0;
  for (int32_t i = 0; i < 2; i++) {
    const double centreX = -200 + 1700 * randomOf(board * 7 + i, 23);
    const double centreY = kBoardHeight * (0.2 + 0.6 * randomOf(board * 7 + i, 29));
    const double size = 10 + 13 * randomOf(board * 7 + i, 31);
    const double distance = std::hypot((x - centreX) / 1.5, y - centreY) / size;
    radius += 3.6 * std::exp(-distance * distance * 0.22);
    knot = std::max(knot, 1 - smoothStep(0.55, 1.25, distance));
  }
  // A ring darkens slowly and ends at once.
  const double ring = radius - std::floor(radius);
  const double late = smoothStep(0.15, 0.93, ring) * (1 - smoothStep(0.93, 1.0, ring));
  const double fibre = 0.6 * layeredNoise(x * 0.018, y * 0.9, 3, seed + 5) +
                       0.4 * valueNoise(x * 0.07, y * 1.6, seed + 17);
  return {late, knot, fibre};
}

Tone boardTone(double x, double y) {
  constexpr Tone kEarlyWood = {0.80, 0.57, 0.36};
  constexpr Tone kLateWood = {0.42, 0.24, 0.125};
  constexpr Tone kKnotWood = {0.20, 0.105, 0.06};
  const auto board = static_cast<int32_t>(std::floor(y / kBoardHeight));
  const double inside = y - board * kBoardHeight;
  const double slide = 900 * randomOf(board, 3);
  const BoardPoint point = boardPoint(x + slide, inside, board);

  Tone tone = mixed(kEarlyWood, kLateWood, 0.15 + 0.62 * point.grain);
  tone = mixed(tone, kKnotWood, 0.85 * point.knot);
  const double patina = layeredNoise(x * 0.006, y * 0.012, 4, 91);
  tone = scaled(tone, (0.72 + 0.5 * point.fibre) * (0.82 + 0.34 * patina) *
                          (0.86 + 0.26 * randomOf(board, 41)));
  // Pores: short dark strokes along the fibre.
  const double pore = smoothStep(0.76, 0.9, valueNoise(x * 0.055, y * 0.85, 57));
  tone = scaled(tone, 1 - 0.32 * pore);
  // The gap between boards, its upper edge in shadow and its lower one catching light.
  const double wear = 1.6 * layeredNoise(x * 0.03, board, 3, 67);
  const double toGap = std::min(inside, kBoardHeight - inside);
  tone = scaled(tone, 0.1 + 0.9 * smoothStep(0.8 + wear, 3.4 + wear, toGap));
  if (inside < 9) tone = scaled(tone, 1 + 0.22 * (1 - smoothStep(3.5, 9, inside)));
  return tone;
}

// --- Slate ------------------------------------------------------------------------------------

// Split stone: flat layers that break off in steps, and a fine roughness over all.
double slateHeight(double x, double y) {
  const double rise = 4.5 * layeredNoise(x * 0.0028, y * 0.0044, 7, 311);
  const double layer = std::floor(rise);
  const double split = layer + smoothStep(0.86, 1.0, rise - layer);
  return 0.34 * split + 0.10 * rise + 1.1 * layeredNoise(x * 0.035, y * 0.05, 5, 321);
}

// --- Seamless fields --------------------------------------------------------------------------

constexpr int kReliefSide = 256;

// Cell borders of a pattern that repeats: 0 on a border, rising to about 1 inside a cell, and the
// distance to the cell's centre in cells.
struct CellPlace {
  double border;
  double centre;
};

CellPlace cellPlace(double x, double y, int cells, double jitter, uint32_t seed) {
  const double u = x * cells / kReliefSide;
  const double v = y * cells / kReliefSide;
  const int column = static_cast<int>(std::floor(u));
  const int row = static_cast<int>(std::floor(v));
  double nearest = 10;
  double second = 10;
  for (int j = row - 2; j <= row + 2; j++) {
    for (int i = column - 2; i <= column + 2; i++) {
      const int wrapped = ((j + cells) % cells) * cells + (i + cells) % cells;
      const double pointX = i + 0.5 + jitter * (randomOf(wrapped, seed) - 0.5);
      const double pointY = j + 0.5 + jitter * (randomOf(wrapped, seed + 1) - 0.5);
      const double distance = std::hypot(u - pointX, v - pointY);
      if (distance < nearest) {
        second = nearest;
        nearest = distance;
      } else if (distance < second) {
        second = distance;
      }
    }
  }
  return {second - nearest, nearest};
}

constexpr int kEnvironmentSide = 128;

// An environment from the tones of the sky (horizon to zenith) and of the ground (horizon to feet).
struct EnvironmentLight {
  double sunX;  // 0 to 1, like all places in the picture
  double sunY;
  double sunPower;
  double haze;  // height of the band in which sky and ground meet
};

template <size_t count>
QImage paintEnvironment(const std::array<Tone, count>& sky, const std::array<Tone, count>& ground,
                        const EnvironmentLight& light) {
  QImage image(kEnvironmentSide, kEnvironmentSide, QImage::Format_RGB888);
  for (int y = 0; y < kEnvironmentSide; y++) {
    for (int x = 0; x < kEnvironmentSide; x++) {
      const double u = (x + 0.5) / kEnvironmentSide;
      const double v = (y + 0.5) / kEnvironmentSide;
      const double horizon = 0.53 + 0.025 * std::sin(u * 9 + 0.6) + 0.012 * std::sin(u * 23);
      Tone tone = mixed(onScale(sky, (horizon - v) / horizon),
                        onScale(ground, (v - horizon) / (1 - horizon)),
                        smoothStep(-light.haze / 2, light.haze / 2, v - horizon));
      const double distance = std::hypot(u - light.sunX, v - light.sunY);
      const double glow = light.sunPower * std::exp(-distance * distance * 22);
      tone = {tone.red + glow, tone.green + glow, tone.blue + glow * 0.96};
      image.setPixel(x, y, pixelOf(tone));
    }
  }
  return image;
}

}  // namespace

QImage paintBoards(int width, int height) {
  QImage image(width, height, QImage::Format_RGB888);
  for (int y = 0; y < height; y++) {
    for (int x = 0; x < width; x++) {
      const double light =
          lampLight(static_cast<double>(x) / width, static_cast<double>(y) / height);
      image.setPixel(x, y, pixelOf(scaled(boardTone(x, y), light)));
    }
  }
  return image;
}

QImage paintSlate(int width, int height) {
  QImage image(width, height, QImage::Format_Grayscale8);
  for (int y = 0; y < height; y++) {
    uint8_t* row = image.scanLine(y);
    for (int x = 0; x < width; x++) {
      // Lit from the upper left: what rises toward the light is bright.
      const double slope = slateHeight(x + 1, y + 1) - slateHeight(x - 1, y - 1);
      const double cloud = layeredNoise(x * 0.0035, y * 0.005, 5, 331);
      const double speck = valueNoise(x * 0.9, y * 0.9, 341);
      const double tone = 0.33 + 0.26 * cloud + 0.05 * (speck - 0.5) + 1.05 * slope;
      row[x] = static_cast<uint8_t>(sampleOf(
          tone * lampLight(static_cast<double>(x) / width, static_cast<double>(y) / height)));
    }
  }
  return image;
}

QImage paintSkyEnvironment() {
  constexpr std::array<Tone, 4> kSky = {Tone{0.97, 0.98, 1.0}, Tone{0.62, 0.80, 0.96},
                                        Tone{0.22, 0.47, 0.83}, Tone{0.05, 0.17, 0.50}};
  constexpr std::array<Tone, 4> kGround = {Tone{0.10, 0.07, 0.06}, Tone{0.33, 0.24, 0.17},
                                           Tone{0.60, 0.48, 0.36}, Tone{0.86, 0.76, 0.62}};
  return paintEnvironment(kSky, kGround,
                          {.sunX = 0.3, .sunY = 0.2, .sunPower = 0.75, .haze = 0.02});
}

QImage paintCopperEnvironment() {
  constexpr std::array<Tone, 4> kSky = {Tone{1.0, 0.74, 0.52}, Tone{0.95, 0.58, 0.36},
                                        Tone{0.74, 0.37, 0.21}, Tone{0.42, 0.17, 0.09}};
  constexpr std::array<Tone, 4> kGround = {Tone{0.44, 0.17, 0.08}, Tone{0.50, 0.21, 0.11},
                                           Tone{0.72, 0.36, 0.20}, Tone{0.93, 0.60, 0.40}};
  return paintEnvironment(kSky, kGround,
                          {.sunX = 0.28, .sunY = 0.22, .sunPower = 0.5, .haze = 0.22});
}

QImage paintStudioEnvironment() {
  constexpr std::array<Tone, 4> kWall = {Tone{0.92, 0.94, 0.97}, Tone{0.55, 0.58, 0.63},
                                         Tone{0.30, 0.32, 0.36}, Tone{0.13, 0.14, 0.17}};
  constexpr std::array<Tone, 4> kFloor = {Tone{0.04, 0.045, 0.055}, Tone{0.14, 0.15, 0.17},
                                          Tone{0.34, 0.35, 0.38}, Tone{0.62, 0.63, 0.66}};
  return paintEnvironment(kWall, kFloor,
                          {.sunX = 0.27, .sunY = 0.2, .sunPower = 0.7, .haze = 0.12});
}

QImage paintLeatherRelief() {
  QImage image(kReliefSide, kReliefSide, QImage::Format_Grayscale8);
  for (int y = 0; y < kReliefSide; y++) {
    uint8_t* row = image.scanLine(y);
    for (int x = 0; x < kReliefSide; x++) {
      const CellPlace coarse = cellPlace(x, y, 18, 0.95, 501);
      const CellPlace fine = cellPlace(x, y, 41, 0.95, 521);
      const double pebble = std::sqrt(smoothStep(0.0, 0.42, coarse.border));
      const double skin = smoothStep(0.0, 0.5, fine.border);
      row[x] = static_cast<uint8_t>(sampleOf(0.16 + 0.66 * pebble + 0.14 * skin * pebble));
    }
  }
  return image;
}

QImage paintHammeredRelief() {
  QImage image(kReliefSide, kReliefSide, QImage::Format_Grayscale8);
  for (int y = 0; y < kReliefSide; y++) {
    uint8_t* row = image.scanLine(y);
    for (int x = 0; x < kReliefSide; x++) {
      // Every blow leaves a bowl; where two meet, a soft ridge stands.
      const CellPlace blow = cellPlace(x, y, 9, 0.8, 601);
      const double bowl = std::min(blow.centre * blow.centre * 1.25, 1.0);
      row[x] = static_cast<uint8_t>(
          sampleOf(0.2 + 0.7 * bowl * (0.75 + 0.25 * smoothStep(0.0, 0.2, blow.border))));
    }
  }
  return image;
}
