// row_division: divisions by a number that holds for a row, as multiplications of 16 bits whose
// quotient may be one too small; settledQuotient makes it exact.

#pragma once

#include <cstdint>

struct RowDivision {
  int32_t shift;
  uint16_t multiplier;
  uint16_t divisor;
};

// value x factor / divisor for values of 0 to `largest`: upperHalf(value << shift, multiplier).
// The quotient of the largest value is below 32768, and largest >= 0.
static constexpr RowDivision scaledDivision(int32_t largest, int32_t factor, int32_t divisor) {
  int32_t shift = 0;
  while (shift < 15 && largest << (shift + 1) <= 65535) ++shift;
  const int32_t multiplier = static_cast<int32_t>((int64_t{factor} << (16 - shift)) / divisor);
  return {shift, static_cast<uint16_t>(multiplier), static_cast<uint16_t>(divisor)};
}

// value / divisor in 1/32768 for values of 0 to `divisor`, at most 32767.
static constexpr RowDivision shareDivision(int32_t divisor) {
  int32_t shift = 0;
  while (divisor << (shift + 1) <= 65535) ++shift;
  const int32_t multiplier = (1 << (31 - shift)) / divisor;
  return {shift, static_cast<uint16_t>(multiplier < 65535 ? multiplier : 65535),
          static_cast<uint16_t>(divisor)};
}
