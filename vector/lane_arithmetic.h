// lane_arithmetic: 16-bit arithmetic that the compiler turns into single instructions on whole
// vectors. Everything here is static, as in set_procedures.

#pragma once

#include <cstdint>

// One column's number in a vector.
using Lane = int16_t;

// The upper half of a 32-bit product.
static inline uint16_t upperHalf(uint16_t a, uint16_t b) {
  const uint32_t product = static_cast<uint32_t>(a) * b;
  return static_cast<uint16_t>(product >> 16);
}

// value x share / 256, rounded down, for values of 0 to 32767 and shares of 0 to 256.
static inline Lane shareOf(Lane value, int32_t share) {
  return static_cast<Lane>(upperHalf(static_cast<uint16_t>(value << 1),  //
                                     static_cast<uint16_t>(share << 7)));
}

static inline Lane magnitude(Lane value) {
  return static_cast<Lane>(value < 0 ? -value : value);
}

static inline Lane least(Lane a, Lane b) {
  return a < b ? a : b;
}

static inline Lane most(Lane a, Lane b) {
  return a > b ? a : b;
}

// Above 256 only the share `rest` (in 1/256) of what exceeds it is kept; values of 0 to 32767.
static inline Lane compressedLane(Lane value, int32_t rest) {
  const auto excess = static_cast<Lane>(value - 256);
  return static_cast<Lane>(least(value, 256) + shareOf(most(excess, 0), rest));
}

// numerator / divisor rounded down, from an estimate that may be one too small. The remainder is
// exact in 16 bits: the divisor is at most 32767.
static inline Lane settledQuotient(uint16_t estimate, uint16_t numerator, uint16_t divisor) {
  const auto remainder = static_cast<uint16_t>(numerator - estimate * divisor);
  return static_cast<Lane>(estimate + (remainder >= divisor ? 1 : 0));
}
