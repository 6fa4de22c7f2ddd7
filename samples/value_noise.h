// value_noise: smooth random fields for painted surfaces. The same place always has the same value.

#pragma once

#include <cstdint>

// One octave, 0 to 1, a new random value at every whole coordinate.
double valueNoise(double x, double y, uint32_t seed);

// Octaves of halving size and weight added up, 0 to 1.
double layeredNoise(double x, double y, int octaves, uint32_t seed);

// A random number, 0 to 1, that belongs to a whole number.
double randomOf(int32_t number, uint32_t seed);

// 0 below `low`, 1 above `high`, smooth in between.
double smoothStep(double low, double high, double value);
