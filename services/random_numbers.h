// random_numbers: the one source of everything random. The same sequence on every system.

#pragma once

#include <cstdint>

void seedRandomNumbers(uint32_t seed);

// 0 to 32767.
int32_t randomNumber();
