#include "settings/random_values.h"

#include "services/random_numbers.h"
#include "settings/effect_settings.h"

int32_t randomInRange(int32_t lo, int32_t hi) {
  if (hi < lo) return lo;
  for (;;) {
    const int64_t value = int64_t{lo} + (randomNumber() >> 4 & 255);
    if (value <= hi) return static_cast<int32_t>(value);
  }
}

static uint16_t randomChannel() {
  return static_cast<uint16_t>((randomNumber() & 255) * 256);
}

void randomColor(Color16* color) {
  color->red = randomChannel();
  color->green = randomChannel();
  color->blue = randomChannel();
}
