#include "resources/artwork/slider_tracks.h"

#include <algorithm>
#include <cmath>

#include "resources/artwork/background.h"
#include "resources/artwork/drawing/palette.h"
#include "resources/artwork/engine_runs.h"

constexpr int32_t kThumbWidth = 12;
constexpr int32_t kThumbHeight = 10;

constexpr Rgb kTrackGround = {186, 184, 179};
constexpr Rgb kBrass = {196, 158, 78};
constexpr Rgb kFrameDark = {142, 140, 134};

// A place in a track: how far along (0 to 1), how far across (-1 at the top to 1), and in pixels.
struct Place {
  double along;
  double across;
  double x;
  double y;
};
using TrackPaint = std::function<Rgb(const Place& place)>;

// The pictures keep half a thumb's distance from the ends, where the values begin and end.
static Picture drawTrack(int32_t width, const TrackPaint& paint) {
  Picture picture = newScaledPicture(width, kTrackHeight, kPanel);
  const double halfThumb = kThumbWidth / 2.0;
  const double first = 1 + halfThumb;
  const double last = width - 1 - halfThumb;
  fillPaint(&picture, {0, 0, width, kTrackHeight}, [&](double x, double y) {
    const double along = std::clamp((x - first) / (last - first), 0.0, 1.0);
    return paint({along, (y - 6) / 5, x, y});
  });
  frameBox(&picture, {0, 0, width, kTrackHeight}, kFrameDark, kGrooveLight);
  // The upper edge throws its shadow into the groove.
  const int32_t pen = penOf(picture);
  for (int32_t y = pen; y < 2 * pen; ++y) {
    for (int32_t x = pen; x < picture.width - pen; ++x) blendPixel(&picture, x, y, kInk, 0.12);
  }
  return picture;
}

// Toward white for a positive light, toward the dark for a negative one; -1 to 1.
static Rgb lit(Rgb colour, double light) {
  const double part = std::clamp(light, -1.0, 1.0);
  return part >= 0 ? mixed(colour, kPaper, part) : mixed(colour, {24, 20, 14}, -part);
}

// --- Geometry -------------------------------------------------------------------------------

// A rounded bar, wider and wider.
Picture drawRadiusTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const double halfWidth = 0.10 + 0.80 * place.along;
    const double u = place.across / halfWidth;
    if (std::abs(u) > 1) return kTrackGround;
    if (std::abs(u) > 0.9) return mixed(kBrass, kDarkGold, u < 0 ? 0.45 : 0.95);
    return lit(kBrass, (u < 0 ? -0.72 : -0.55) * u);
  });
}

// A face that sinks below the middle line on the left and rises above it on the right.
Picture drawHeightTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const double height = 2 * place.along - 1;
    const double level = -0.92 * height;
    const bool onFace = height >= 0 ? place.across <= 0 && place.across >= level
                                    : place.across >= 0 && place.across <= level;
    if (std::abs(place.across) < 0.1) return kFrameDark;
    if (!onFace) return kTrackGround;
    const double edge = std::abs(place.across - level);
    if (height >= 0) return lit(kBrass, edge < 0.22 ? 0.75 : 0.30 * (1 - edge));
    return lit(kBrass, edge < 0.22 ? -0.20 : -0.72 + 0.25 * edge);
  });
}

static double reliefHeight(double x, double y, double scale) {
  return smoothNoise(x / scale, y / scale, 3) + 0.5 * smoothNoise(x * 2 / scale, y * 2 / scale, 5);
}

// Light on a relief: the slope toward the upper left.
static double reliefLight(double x, double y, double scale) {
  const double step = 0.35 * scale;
  return (reliefHeight(x + step, y + step, scale) - reliefHeight(x - step, y - step, scale)) * 0.5;
}

// Inside out on the left, smooth in the middle, deep on the right.
Picture drawTextureTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const double depth = 2 * place.along - 1;
    return lit(kBrass, 0.12 + 1.25 * depth * reliefLight(place.x, place.y, 4.4));
  });
}

static double reliefScale(double part) {
  return 1.3 + 4.6 * part * part;
}

// The same relief from fine to coarse.
Picture drawTextureSizeTrack() {
  return drawTrack(kSizeTrackWidth, [](const Place& place) {
    // With the scale growing along the track, the pattern's own place is the integral of 1/scale.
    const double part = (place.x - kSizeTrackWidth / 2.0) / 56 + 0.5;
    double travelled = 0;
    constexpr int32_t kSteps = 24;
    for (int32_t i = 0; i < kSteps; ++i) {
      travelled += 56 * part / kSteps / reliefScale(part * (i + 0.5) / kSteps);
    }
    const double across = (place.y - 6) / reliefScale(part);
    return lit(kBrass, 0.12 + 0.95 * reliefLight(travelled + 40, across + 7, 1.0));
  });
}

// --- Light ----------------------------------------------------------------------------------

static Rgb graphiteBar(double across) {
  return lit({84, 84, 88}, -0.25 * across - 0.35 * across * across);
}

// A highlight of one breadth that grows bright.
Picture drawGlossTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const double away = (place.across + 0.30) / 0.22;
    return mixed(graphiteBar(place.across), kPaper, place.along / (1 + away * away * away * away));
  });
}

// A highlight of one brightness that grows broad.
Picture drawGlareTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const double breadth = 0.07 + 0.80 * place.along * place.along;
    const double away = (place.across + 0.30) / breadth;
    return mixed(graphiteBar(place.across), kPaper, 0.92 / (1 + away * away));
  });
}

// Ceiling, wall, the dark line of the floor, and the floor: what the metal comes to mirror.
static Rgb mirroredRoom(double across) {
  if (across < -0.55) return mixed({255, 250, 232}, {250, 214, 122}, (across + 1) / 0.45);
  if (across < 0.05) return mixed({250, 214, 122}, {214, 150, 48}, (across + 0.55) / 0.6);
  if (across < 0.30) return mixed({214, 150, 48}, {38, 20, 6}, (across - 0.05) / 0.25);
  return mixed({38, 20, 6}, {186, 126, 54}, (across - 0.30) / 0.70);
}

Picture drawReflectionTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const Rgb dull = lit(kSteel, -0.25 * place.across);
    return mixed(dull, mirroredRoom(place.across), place.along);
  });
}

// --- Glass and film -------------------------------------------------------------------------

// A solid bar turns into a glass one, and the chequered ground comes through.
Picture drawGlassinessTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const auto column = static_cast<int32_t>(std::floor(place.x / 3));
    const auto row = static_cast<int32_t>(std::floor((place.y - 0.5) / 3));
    const Rgb ground = (column + row) % 2 == 0 ? Rgb{250, 250, 250} : Rgb{150, 156, 160};
    const Rgb solid = lit({112, 130, 140}, -0.30 * place.across);
    const Rgb bar = mixed(solid, mixed(ground, {176, 208, 216}, 0.25), place.along);
    const double away = (place.across + 0.52) / 0.16;
    return mixed(bar, kPaper, 0.85 / (1 + away * away * away * away));
  });
}

// Bright where folds of light meet; `shift` moves one colour's folds against another's.
static double gatheredLight(double x, double y, double shift) {
  const double bend = 2.4 * smoothNoise(x / 9, y / 7, 11);
  const double fold = smoothNoise((x + bend + shift) / 6.5, (y + bend) / 5.0, 17);
  return 1 / (1 + 90 * fold * fold);
}

Picture drawCausticTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const Rgb ground = lit({66, 92, 104}, -0.15 * place.across);
    const double spread = 0.9 * place.along;
    const double strength = 0.08 + 0.92 * place.along;
    const double red = strength * gatheredLight(place.x, place.y, -spread);
    const double green = strength * gatheredLight(place.x, place.y, 0);
    const double blue = strength * gatheredLight(place.x, place.y, spread);
    return Rgb{ground.red + (255 - ground.red) * red, ground.green + (252 - ground.green) * green,
               ground.blue + (235 - ground.blue) * blue};
  });
}

// Of the films by percent the colours by slope: the nearest one, or between them where the steps
// would be seen.
static Rgb colourOfFilm(const std::vector<std::vector<Rgb>>& films, double percent, double slope) {
  const auto row = static_cast<size_t>(slope);
  if (drawnScale() == 100) return films[static_cast<size_t>(percent + 0.5)][row];
  const auto column = static_cast<size_t>(percent);
  const size_t nextColumn = std::min(column + 1, films.size() - 1);
  const size_t nextRow = std::min(row + 1, films[column].size() - 1);
  const double down = slope - static_cast<double>(row);
  return mixed(mixed(films[column][row], films[column][nextRow], down),
               mixed(films[nextColumn][row], films[nextColumn][nextRow], down),
               percent - static_cast<double>(column));
}

// A column of the track is a slope that falls away from the middle, seen through the film.
static Picture drawFilmTrack(int32_t (*iridescenceAt)(int32_t percent),
                             int32_t (*iriColorsAt)(int32_t percent)) {
  constexpr int32_t kPercents = 101;
  std::vector<std::vector<Rgb>> films;
  for (int32_t percent = 0; percent < kPercents; ++percent) {
    films.push_back(filmColours(iridescenceAt(percent), iriColorsAt(percent)));
  }
  return drawTrack(kTrackWidth, [&films](const Place& place) {
    const double slope =
        std::abs(place.across) * 0.55 * static_cast<double>(films.front().size() - 1);
    return lit(colourOfFilm(films, place.along * 100, slope), -0.12 * place.across);
  });
}

Picture drawIridescenceTrack() {
  return drawFilmTrack([](int32_t percent) { return percent; }, [](int32_t) { return 26; });
}

Picture drawFilmColoursTrack() {
  return drawFilmTrack([](int32_t) { return 100; }, [](int32_t percent) { return percent; });
}

// Bright brass, and the green that creeps in from the edges.
Picture drawTarnishTrack() {
  return drawTrack(kTrackWidth, [](const Place& place) {
    const Rgb brass = lit(kBrass, 0.12 - 0.40 * place.across);
    const double grain =
        smoothNoise(place.x / 5, place.y / 4, 23) + 0.6 * smoothNoise(place.x / 2, place.y / 2, 29);
    const double hollow = 0.55 * std::abs(place.across) * std::abs(place.across);
    const double part = smoothRise(
        0.75, 1.35, 1.75 * place.along + 0.42 * grain * (1 - 0.5 * place.along) + hollow);
    return mixed(brass, lit(kVerdigris, 0.14 - 0.22 * place.across + 0.10 * grain), part);
  });
}

// --- Thumb ----------------------------------------------------------------------------------

Picture drawThumb(bool enabled) {
  const Rgb outline = enabled ? Rgb{84, 82, 78} : Rgb{168, 166, 162};
  Picture picture = newScaledPicture(kThumbWidth, kThumbHeight, outline);
  const int32_t pen = penOf(picture);
  const Box face = {pen, pen, picture.width - pen, picture.height - pen};
  for (int32_t y = face.top; y < face.bottom; ++y) {
    const double part = (y - face.top) / (face.bottom - face.top - 1.0);
    fillPixels(&picture, {face.left, y, face.right, y + 1},
               enabled ? mixed({250, 249, 247}, {206, 203, 197}, part)
                       : mixed({230, 229, 226}, {216, 214, 210}, part));
  }
  if (enabled) {
    constexpr Rgb kShade = {182, 179, 172};
    fillPixels(&picture, {face.left, face.top, face.right, face.top + pen}, kPaper);
    fillPixels(&picture, {face.left, face.top, face.left + pen, face.bottom}, kPaper);
    fillPixels(&picture, {face.right - pen, face.top + pen, face.right, face.bottom}, kShade);
    fillPixels(&picture, {face.left + pen, face.bottom - pen, face.right, face.bottom}, kShade);
  }
  const int32_t middle = picture.width / 2;
  const int32_t bottom = face.bottom - pen;
  fillPixels(&picture, {middle - pen, 2 * pen, middle, bottom},
             enabled ? kGold : Rgb{176, 174, 170});
  fillPixels(&picture, {middle, 2 * pen, middle + pen, bottom},
             enabled ? kLightGold : kGrooveLight);
  return picture;
}
