// mask_families: kinds of selections for tests and benchmarks of the height field. The same bytes
// on every system.

#pragma once

#include <cstdint>
#include <vector>

#include "tests/support/random_inputs.h"

constexpr int32_t kMaskFamilies = 36;
constexpr int32_t kSmallSoftShapes = 34;

const char* maskFamilyName(int32_t family);

// -1 when there is none of that name.
int32_t maskFamilyNamed(const char* name);

// One of the family; size, places and softness vary with the random numbers.
std::vector<uint8_t> maskOfFamily(int32_t family, int32_t width, int32_t height,
                                  TestRandom* random);
