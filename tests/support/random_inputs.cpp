#include "tests/support/random_inputs.h"

#include <algorithm>
#include <cmath>

#include "settings/setting_ranges.h"

int32_t randomBetween(TestRandom* random, int32_t lo, int32_t hi) {
  random->state = random->state * 6364136223846793005ULL + 1442695040888963407ULL;
  const auto bits = static_cast<uint32_t>(random->state >> 33);
  return lo + static_cast<int32_t>(bits % (static_cast<uint32_t>(hi - lo) + 1));
}

static int32_t valueInRange(TestRandom* random, const SettingRange& range) {
  switch (randomBetween(random, 0, 7)) {
    case 0:
      return range.minimum;
    case 1:
      return range.maximum;
    default:
      return randomBetween(random, range.minimum, range.maximum);
  }
}

static float randomComponent(TestRandom* random) {
  return static_cast<float>(randomBetween(random, -1000, 1000)) / 1000;
}

static uint16_t randomChannel(TestRandom* random, const SettingRange& range) {
  return static_cast<uint16_t>(valueInRange(random, range));
}

void randomSettings(TestRandom* random, EffectSettings* settings) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    void* field = reinterpret_cast<char*>(settings) + range.offset;
    switch (range.form) {
      case SettingForm::number:
        *static_cast<int32_t*>(field) = valueInRange(random, range);
        break;
      case SettingForm::toggle:
        *static_cast<uint32_t*>(field) = static_cast<uint32_t>(valueInRange(random, range));
        break;
      case SettingForm::direction: {
        auto* direction = static_cast<Direction*>(field);
        direction->x = randomComponent(random);
        direction->y = randomComponent(random);
        direction->z = randomComponent(random);
        break;
      }
      case SettingForm::color: {
        auto* color = static_cast<Color16*>(field);
        color->red = randomChannel(random, range);
        color->green = randomChannel(random, range);
        color->blue = randomChannel(random, range);
        break;
      }
    }
  }
}

static uint8_t byteOf(TestRandom* random) {
  return static_cast<uint8_t>(randomBetween(random, 0, 255));
}

static void fillRandomly(TestRandom* random, std::vector<uint8_t>* bytes, size_t count) {
  bytes->resize(count);
  for (uint8_t& value : *bytes) value = byteOf(random);
}

// A few discs, soft or hard at their edge.
static void drawDiscs(TestRandom* random, DirectInput* input, bool soft) {
  input->mask.assign(static_cast<size_t>(input->width) * input->height, 0);
  for (int32_t disc = 0; disc < 3; ++disc) {
    const int32_t centreX = randomBetween(random, 0, input->width);
    const int32_t centreY = randomBetween(random, 0, input->height);
    const int32_t radius = randomBetween(random, 1, std::max(input->width, input->height));
    for (int32_t y = 0; y < input->height; ++y) {
      for (int32_t x = 0; x < input->width; ++x) {
        const double inside = radius - std::hypot(x - centreX, y - centreY);
        const double level = soft ? inside * 100 : (inside > 0 ? 255.0 : 0.0);
        uint8_t& value = input->mask[static_cast<size_t>(y) * input->width + x];
        value = std::max(value, static_cast<uint8_t>(std::clamp(level, 0.0, 255.0)));
      }
    }
  }
}

static void drawSelection(TestRandom* random, DirectInput* input) {
  const int32_t kind = randomBetween(random, 0, 4);
  if (kind == 1) {
    fillRandomly(random, &input->mask, static_cast<size_t>(input->width) * input->height);
  } else if (kind == 2) {
    input->mask.resize(static_cast<size_t>(input->width) * input->height);
    for (uint8_t& value : input->mask)
      value = randomBetween(random, 0, 9) == 0 ? byteOf(random) : 255;
  } else if (kind > 2) {
    drawDiscs(random, input, /*soft=*/kind == 3);
  }
}

DirectInput randomInput(TestRandom* random, int32_t width, int32_t height) {
  DirectInput input = {};
  input.settings = defaultSettings();
  randomSettings(random, &input.settings);
  input.width = width;
  input.height = height;
  input.planes = randomBetween(random, 1, 4);
  fillRandomly(random, &input.source, static_cast<size_t>(width) * height * input.planes);
  drawSelection(random, &input);
  fillRandomly(random, &input.environment, 64 * 64 * 3);
  if (input.settings.textureChoice == kTextureChoiceFile) {
    input.textureWidth = randomBetween(random, 1, 256);
    input.textureHeight = randomBetween(random, 1, 256);
    fillRandomly(random, &input.texture,
                 static_cast<size_t>(input.textureWidth) * input.textureHeight);
  }
  input.seed = static_cast<uint32_t>(randomBetween(random, 0, 1000000));
  if (randomBetween(random, 0, 3) == 0) {
    input.settings.previewMode = 1;
    input.settings.previewScale = randomBetween(random, 1, 9);
    input.settings.previewOriginX = randomBetween(random, 0, 3000);
    input.settings.previewOriginY = randomBetween(random, 0, 3000);
  }
  return input;
}
