#include "services/random_numbers.h"

// The linear congruence of the Windows C library, whose `rand` old presets were made with.
constexpr uint32_t kMultiplier = 214013;
constexpr uint32_t kIncrement = 2531011;

static uint32_t randomState = 1;

void seedRandomNumbers(uint32_t seed) {
  randomState = seed;
}

uint32_t presentSeed() {
  return randomState;
}

int32_t randomNumber() {
  randomState = randomState * kMultiplier + kIncrement;
  return static_cast<int32_t>(randomState >> 16 & 32767);
}
