#include "samples/value_noise.h"

#include <algorithm>
#include <cmath>

namespace {

// Mixes the bits of a lattice point; the constants are odd and otherwise arbitrary.
double latticeValue(int32_t x, int32_t y, uint32_t seed) {
  uint32_t bits = static_cast<uint32_t>(x) * 0x8DA6B343U ^ static_cast<uint32_t>(y) * 0xD8163841U ^
                  seed * 0xCB1AB31FU;
  bits = (bits ^ (bits >> 15)) * 0x2C1B3C6DU;
  bits = (bits ^ (bits >> 12)) * 0x297A2D39U;
  bits ^= bits >> 15;
  return bits / 4294967295.0;
}

double eased(double t) {
  return t * t * t * (t * (t * 6 - 15) + 10);
}

}  // namespace

double valueNoise(double x, double y, uint32_t seed) {
  const double left = std::floor(x);
  const double top = std::floor(y);
  const auto column = static_cast<int32_t>(left);
  const auto row = static_cast<int32_t>(top);
  const double u = eased(x - left);
  const double v = eased(y - top);
  const double upper =
      std::lerp(latticeValue(column, row, seed), latticeValue(column + 1, row, seed), u);
  const double lower =
      std::lerp(latticeValue(column, row + 1, seed), latticeValue(column + 1, row + 1, seed), u);
  return std::lerp(upper, lower, v);
}

double layeredNoise(double x, double y, int octaves, uint32_t seed) {
  double sum = 0;
  double weights = 0;
  double weight = 1;
  for (int i = 0; i < octaves; i++) {
    sum += weight * valueNoise(x, y, seed + static_cast<uint32_t>(i));
    weights += weight;
    weight /= 2;
    x *= 2.03;  // not quite double, so that the lattices of the octaves do not coincide
    y *= 2.03;
  }
  return sum / weights;
}

double randomOf(int32_t number, uint32_t seed) {
  return latticeValue(number, 0, seed);
}

double smoothStep(double low, double high, double value) {
  const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
  return t * t * (3 - 2 * t);
}
