// random_numbers: the one source of everything random. The same sequence on every system.

#pragma once

#include <cstdint>

void seedRandomNumbers(uint32_t seed);

// The seed with which the numbers would go on as they will.
uint32_t presentSeed();

// 0 to 32767.
int32_t randomNumber();
