#include "pictures/texture_preparation.h"

#include <algorithm>
#include <cmath>

#include "entry/session_record.h"
#include "geometry/texture_patterns.h"
#include "pictures/picture_surface.h"
#include "services/fixed_point.h"
#include "services/random_numbers.h"

constexpr double kDegreesPerRadian = 57.295779524;
constexpr int32_t kWarmUpRows = 8;  // a walk forgets its random first row in these
constexpr int32_t kSeamRows = 16;   // rows blended so that a walk repeats without a seam

struct PatternChoice {
  uint32_t type;
  uint32_t second;
  uint32_t third;
  uint32_t variant;
  uint32_t fourth;
};

// By texture choice, from 1.
constexpr PatternChoice kPatternChoices[] = {
    {kPatternFlat, 5, 1, 1, 0},     {kPatternWalk, 5, 1, 1, 0},  {kPatternWalk, 5, 1, 3, 0},
    {kPatternWalk, 5, 1, 5, 0},     {kPatternWalk, 5, 1, 2, 0},  {kPatternStripes, 4, 3, 3, 40},
    {kPatternCobbles, 5, 2, 55, 0}, {kPatternCells, 5, 2, 3, 0}, {kPatternNoise, 5, 3, 3, 0},
    {kPatternNoise, 5, 3, 3, 0},    {kPatternNoise, 5, 3, 3, 0}, {kPatternStripes, 5, 3, 2, 40}};

void prepareTexture(SessionRecord* session) {
  if (settingsOf(session)->textureChoice != kTextureChoiceFile) generateTexture(session);
}

void generateTexture(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (session->render.heightField.address == nullptr || settings->texturePicture == nullptr) return;
  settings->textureSeed = presentSeed();
  setUpPattern(session);
  const bool walk = settings->proceduralTexture[0] == kPatternWalk;
  if (walk) {
    for (int32_t row = 0; row < kWarmUpRows; ++row) generateTextureRow(session, row);
  }
  for (int32_t row = 0; row < kTextureSide; ++row) generateTextureRow(session, row);
  settings->textureWidth = kTextureSide;
  settings->textureHeight = kTextureSide;
  if (walk) {
    blendTextureSeam(session, kSeamRows);
    settings->textureHeight = kTextureSide - kSeamRows;
  }
}

static void fillParameters(EffectSettings* settings) {
  const int32_t choice = settings->textureChoice;
  if (choice < 1 || choice >= kTextureChoiceFile) return;
  const PatternChoice& row = kPatternChoices[choice - 1];
  settings->proceduralTexture[0] = row.type;
  settings->proceduralTexture[1] = row.second;
  settings->proceduralTexture[2] = row.third;
  settings->proceduralTexture[3] = row.fourth;
  settings->proceduralTextureVariant = row.variant;
}

// What the second and third parameters stand for, limited to the values that have a meaning.
static int32_t fineness(const EffectSettings* settings) {  // 5 for 1 down to 1 for 5
  return 6 - static_cast<int32_t>(std::clamp(settings->proceduralTexture[1], 1U, 5U));
}

static int32_t halvings(const EffectSettings* settings) {  // 0 to 2
  return static_cast<int32_t>(std::clamp(settings->proceduralTexture[2], 1U, 3U)) - 1;
}

static void setUpWalk(const EffectSettings* settings, PatternState* pattern) {
  for (int16_t& value : pattern->walkMemory) {
    value = static_cast<int16_t>(randomNumber() & 2047);
  }
  pattern->walkScale = fineness(settings);
  pattern->walkStep = 64 >> halvings(settings);
}

static void setUpCells(const EffectSettings* settings, PatternState* pattern) {
  const int32_t scale = 3 * (fineness(settings) + 2);
  pattern->cellShift = 2 - halvings(settings);
  for (int16_t& value : pattern->jitterTable) {
    value = static_cast<int16_t>((randomNumber() >> 3) % 28);
  }
  for (int32_t i = 0; i < kRootEntries; ++i) {
    pattern->rootTable[i] = static_cast<int16_t>(truncateToInt32(std::sqrt(i) * scale));
  }
}

static void setUpNoise(PatternState* pattern) {
  for (int16_t& value : pattern->noiseTable) value = static_cast<int16_t>(randomNumber() & 255);
}

void setUpPattern(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  PatternState* pattern = &session->pattern;
  fillParameters(settings);
  buildToneTable(settings->proceduralTextureVariant, session);
  pattern->walkPrevious = 0;
  const Word32 fourth = static_cast<int32_t>(settings->proceduralTexture[3]);
  switch (settings->proceduralTexture[0]) {
    case kPatternWalk:
      setUpWalk(settings, pattern);
      break;
    case kPatternCells:
    case kPatternCobbles:
      setUpCells(settings, pattern);
      break;
    case kPatternNoise:
      setUpNoise(pattern);
      pattern->noiseFloor = (fourth * 512 / 100 - 127).value;
      break;
    case kPatternStripes:
      setUpNoise(pattern);
      pattern->noiseFloor = (fourth * 64 / 100).value;
      pattern->noiseStripe = (8 >> halvings(settings)) * fineness(settings);
      break;
    default:
      break;
  }
}

static float toneGain(int32_t textureChoice) {
  switch (textureChoice) {
    case 2:
    case 7:
      return -0.25F;
    case 6:
    case 12:
      return 0.5F;
    case 8:
      return -0.5F;
    default:
      return 0.25F;
  }
}

void buildToneTable(uint32_t variant, SessionRecord* session) {
  const double gain = toneGain(settingsOf(session)->textureChoice);
  int32_t* tone = session->pattern.toneTable;
  switch (variant) {
    case 1:  // a ramp with a steep way back at its end
      for (int32_t i = 0; i < kToneEntries; ++i) tone[i] = truncateToInt32(i * gain);
      for (int32_t k = 0; k < 16; ++k) tone[240 + k] = truncateToInt32((248 - 16 * k) * gain);
      break;
    case 2:  // up and down
      for (int32_t i = 0; i < 128; ++i) {
        tone[i] = truncateToInt32(i * gain * 2);
        tone[128 + i] = truncateToInt32((255 - 2 * i) * gain);
      }
      break;
    case 3:  // half a wave
      for (int32_t i = 0; i < kToneEntries; ++i) {
        const int32_t degrees = i * 180 / 255;
        tone[i] = truncateToInt32(std::sin(degrees / kDegreesPerRadian) * (gain * 255));
      }
      break;
    case 5:  // half a wave between two flats
      for (int32_t i = 0; i < kToneEntries; ++i) tone[i] = 0;
      for (int32_t i = 0; i < 128; ++i) {
        const int32_t degrees = i * 180 / 127;
        tone[64 + i] = truncateToInt32(std::sin(degrees / kDegreesPerRadian) * (gain * 255));
      }
      break;
    case 55:  // the 90 is in radians: it only shifts the wave, and pictures depend on it
      for (int32_t i = 0; i < kToneEntries; ++i) {
        const int32_t degrees = i * 90 / 255;
        tone[i] =
            truncateToInt32(255 - std::sin(degrees / kDegreesPerRadian + 90.0) * (gain * 3 * 255));
      }
      break;
    default:
      break;
  }
}

void blendTextureSeam(SessionRecord* session, int32_t n) {
  PictureSurface* surface = settingsOf(session)->texturePicture;
  for (int32_t y = 0; y <= n; ++y) {
    for (int32_t x = 0; x < kTextureSide; ++x) {
      const int32_t a = surfacePixel(surface, x, y)[1];
      const int32_t b = surfacePixel(surface, x, kTextureSide - 1 - n + y)[1];
      setGreyPixel(surface, x, y, (a * y + b * (n - y)) / n);
    }
  }
}
