#include "geometry/texture_patterns.h"

#include <algorithm>

#include "entry/session_record.h"
#include "pictures/picture_surface.h"
#include "services/fixed_point.h"
#include "services/random_numbers.h"

constexpr int32_t kFlatGrey = 192;

static void flatRow(PictureSurface* surface, int32_t row) {
  for (int32_t x = 0; x < kTextureSide; ++x) setGreyPixel(surface, x, row, kFlatGrey);
}

// A random walk along the row, pulled toward the row above.
static void walkRow(PatternState* pattern, PictureSurface* surface) {
  for (int32_t x = 0; x < kTextureSide; ++x) {
    const int32_t weight = (randomNumber() & 7) + 12;
    int32_t value = (pattern->walkMemory[x] * weight + pattern->walkPrevious * (32 - weight)) / 32 +
                    pattern->walkStep;
    if (value > 1023) value -= 2047;
    const int32_t tone = pattern->toneTable[((value + 1023) * pattern->walkScale / 8) & 255];
    setGreyPixel(surface, x, pattern->textureRow, (Word32(tone) + 128).value);
    pattern->walkMemory[x] = static_cast<int16_t>(value);
    pattern->walkPrevious = value;
  }
}

// Squared distance from (x, y) to the jittered point of cell (i, j).
static int32_t distanceToCell(const PatternState* pattern, int32_t x, int32_t y, int32_t i,
                              int32_t j) {
  const int32_t dx = pattern->jitterTable[(i & 15) * 17 + (j & 15) * 27] & 31;
  const int32_t dy = pattern->jitterTable[(i & 15) * 19 + (j & 15) * 37] & 31;
  const int32_t toX = 32 * i + dx - x;
  const int32_t toY = 32 * j + dy - y;
  return toX * toX + toY * toY;
}

// Distance to the nearest of the points scattered one to a cell: rings around cells, or round
// cobbles.
static void cellsRow(PatternState* pattern, PictureSurface* surface, bool cobbles) {
  const int32_t y = pattern->textureRow << pattern->cellShift;
  const int32_t cellRow = (y - 16) >> 5;
  for (int32_t column = 0; column < kTextureSide; ++column) {
    const int32_t x = column << pattern->cellShift;
    const int32_t cellColumn = (x - 16) >> 5;
    int32_t nearest = cobbles ? 10000 : 1023;
    for (int32_t j = cellRow; j <= cellRow + 2; ++j) {
      for (int32_t i = cellColumn; i <= cellColumn + 2; ++i) {
        nearest = std::min(nearest, distanceToCell(pattern, x, y, i, j));
      }
    }
    if (nearest > 2047) nearest = 4095 - nearest;
    int32_t tone = pattern->rootTable[std::clamp(nearest, 0, kRootEntries - 1)];
    if (tone > 255) tone = 511 - tone;
    const Word32 shaded = Word32(pattern->toneTable[tone & 255]) + (cobbles ? -160 : 208);
    setGreyPixel(surface, column, pattern->textureRow, limited(shaded, 0, 255).value);
  }
}

// Value noise on a lattice of 128 units, folded at 2048; the periods make it repeat.
static int32_t latticeNoise(const PatternState* pattern, int32_t u, int32_t w, int32_t periodU,
                            int32_t periodW) {
  u &= 4095;
  w &= 4095;
  if (u > 2047) u = 4096 - u;
  if (w > 2048) w = 4096 - w;
  const int32_t partU = u & 127;
  const int32_t partW = w & 127;
  const int32_t cellU = u >> 7;
  const int32_t cellW = w >> 7;
  const int32_t maskU = (periodU >> 7) - 1;
  const int32_t maskW = (periodW >> 7) - 1;
  const int32_t i0 = (cellU & maskU) * 29;
  const int32_t i1 = ((cellU + 1) & maskU) * 29;
  const int32_t j0 = (cellW & maskW) * 37;
  const int32_t j1 = ((cellW + 1) & maskW) * 37;
  const int16_t* noise = pattern->noiseTable;
  const auto corner = [noise](int32_t i, int32_t j) { return noise[(i + j) & 2047]; };
  // The weights run to 127, not 128; pictures depend on it.
  const int32_t upper = (corner(i1, j1) * partU + corner(i0, j1) * (127 - partU)) >> 3;
  const int32_t lower = (corner(i1, j0) * partU + corner(i0, j0) * (127 - partU)) >> 3;
  return ((upper * partW + lower * (127 - partW)) >> 5) - 16256;
}

// One octave of the noise: its own shift of the origin, weight, scale and period.
struct Octave {
  int32_t shift;
  int32_t weight;
  int32_t scale;
  int32_t period;
};

constexpr Octave kOctaves[] = {
    {2, 1, 6, 16384}, {3, 3, 5, 8192}, {4, 5, 4, 4096}, {0, 7, 3, 2048}, {1, 10, 2, 1024}};

static int32_t octaveSum(const PatternState* pattern, int32_t textureChoice, int32_t x) {
  const int32_t y = pattern->textureRow;
  const int32_t finerDown = textureChoice == 11 ? 0 : 1;
  const int32_t finerAcross = textureChoice == 10 ? 0 : 1;
  const int32_t periodFactor = textureChoice == 10 ? 1 : 2;
  int32_t sum = 0;
  for (const Octave& octave : kOctaves) {
    const int32_t u = (x + octave.shift) << (octave.scale + finerAcross);
    const int32_t w = (y + octave.shift) << (octave.scale + finerDown);
    sum += octave.weight * latticeNoise(pattern, u, w, octave.period * periodFactor,
                                        256 << (octave.scale + finerDown));
  }
  return sum >> 12;
}

static void noiseRow(const EffectSettings* settings, PatternState* pattern,
                     PictureSurface* surface) {
  const bool toned = settings->proceduralTextureVariant != 1;
  for (int32_t x = 0; x < kTextureSide; ++x) {
    Word32 value = octaveSum(pattern, settings->textureChoice, x);
    if (toned) value = Word32(3) * pattern->toneTable[value.value & 255];
    setGreyPixel(surface, x, pattern->textureRow, larger(value, pattern->noiseFloor).value);
  }
}

static void stripesRow(const EffectSettings* settings, PatternState* pattern,
                       PictureSurface* surface) {
  for (int32_t x = 0; x < kTextureSide; ++x) {
    const Word32 noise = octaveSum(pattern, settings->textureChoice, x);
    const Word32 index =
        Word32(x + pattern->textureRow) * pattern->noiseStripe + (noise * pattern->noiseFloor >> 4);
    setGreyPixel(surface, x, pattern->textureRow, pattern->toneTable[index.value & 255]);
  }
}

void generateTextureRow(SessionRecord* session, int32_t row) {
  const EffectSettings* settings = settingsOf(session);
  PictureSurface* surface = settings->texturePicture;
  if (surface == nullptr) return;
  PatternState* pattern = &session->pattern;
  pattern->textureRow = row;
  switch (settings->proceduralTexture[0]) {
    case kPatternFlat:
      flatRow(surface, row);
      break;
    case kPatternWalk:
      walkRow(pattern, surface);
      break;
    case kPatternCells:
      cellsRow(pattern, surface, /*cobbles=*/false);
      break;
    case kPatternCobbles:
      cellsRow(pattern, surface, /*cobbles=*/true);
      break;
    case kPatternNoise:
      noiseRow(settings, pattern, surface);
      break;
    case kPatternStripes:
      stripesRow(settings, pattern, surface);
      break;
    default:
      break;
  }
}
