// random_inputs: generated renders for comparing the product with its slow twin. The same sequence
// on every system.

#pragma once

#include <cstdint>

#include "tests/support/hosts/direct_render.h"

// Own generator, so that the product's random numbers stay its own.
struct TestRandom {
  uint64_t state;
};

// lo to hi, both included.
int32_t randomBetween(TestRandom* random, int32_t lo, int32_t hi);

// Settings anywhere in their ranges; every fourth time each, one sits at an end of its range.
void randomSettings(TestRandom* random, EffectSettings* settings);

// A picture of this size with random content, a random kind of selection (none, hard, antialiased,
// noise), random settings and pictures; one in four is a preview.
DirectInput randomInput(TestRandom* random, int32_t width, int32_t height);
