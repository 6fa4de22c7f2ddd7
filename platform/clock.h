// clock: what a back end supplies to tell the time: one that seeds the random numbers, one that
// tells how soon one event came after another.

#pragma once

#include <cstdint>

uint32_t secondsNow();

// From any beginning, and over its largest value back to 0.
uint32_t millisecondsNow();
