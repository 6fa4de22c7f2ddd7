// clock: what a back end supplies to tell the time that seeds the random numbers.

#pragma once

#include <cstdint>

uint32_t secondsNow();
