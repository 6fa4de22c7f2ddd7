// fixed_point: the integer arithmetic of the pixel loops, stated once.
//
// Word32          a signed 32-bit number whose sums and products wrap around on overflow and whose
//                 divisions truncate toward zero. Settings within their ranges never reach a wrap;
//                 a damaged preset may, and then the outcome is still the same on every system.
// truncateToInt32 a table entry from floating point, toward zero, limited to 32 bits.
// saturateToInt16 a height-field cell or coordinate, limited to 16 bits.
//
// In products of a channel, a weight and a light, 256 stands for 1.0 (a shift by 8 divides by it).

#pragma once

#include <cstdint>

struct Word32 {
  int32_t value;

  constexpr Word32() : value(0) {
  }
  constexpr Word32(int32_t v) : value(v) {
  }  // NOLINT: numbers mix freely with words
};

constexpr Word32 wrapped(uint32_t bits) {
  return Word32(static_cast<int32_t>(bits));
}

constexpr uint32_t bitsOf(Word32 a) {
  return static_cast<uint32_t>(a.value);
}

constexpr Word32 operator+(Word32 a, Word32 b) {
  return wrapped(bitsOf(a) + bitsOf(b));
}
constexpr Word32 operator-(Word32 a, Word32 b) {
  return wrapped(bitsOf(a) - bitsOf(b));
}
constexpr Word32 operator-(Word32 a) {
  return wrapped(0U - bitsOf(a));
}
constexpr Word32 operator*(Word32 a, Word32 b) {
  return wrapped(bitsOf(a) * bitsOf(b));
}
// Truncates toward zero. Dividing by zero gives 0, and the most negative number over -1 wraps.
constexpr Word32 operator/(Word32 a, Word32 b) {
  if (b.value == 0) return 0;
  if (b.value == -1) return -a;
  return a.value / b.value;
}
constexpr Word32 operator>>(Word32 a, int bits) {
  return a.value >> bits;
}
constexpr Word32 operator<<(Word32 a, int bits) {
  return wrapped(bitsOf(a) << bits);
}
constexpr Word32& operator+=(Word32& a, Word32 b) {
  return a = a + b;
}

constexpr bool operator==(Word32 a, Word32 b) {
  return a.value == b.value;
}
constexpr bool operator<(Word32 a, Word32 b) {
  return a.value < b.value;
}
constexpr bool operator>(Word32 a, Word32 b) {
  return a.value > b.value;
}
constexpr bool operator<=(Word32 a, Word32 b) {
  return a.value <= b.value;
}
constexpr bool operator>=(Word32 a, Word32 b) {
  return a.value >= b.value;
}

constexpr Word32 absolute(Word32 a) {
  return a < 0 ? -a : a;
}
constexpr Word32 larger(Word32 a, Word32 b) {
  return a < b ? b : a;
}
constexpr Word32 smaller(Word32 a, Word32 b) {
  return b < a ? b : a;
}
constexpr Word32 limited(Word32 a, Word32 low, Word32 high) {
  return smaller(larger(a, low), high);
}

// Toward zero; beyond 32 bits the nearest limit; not a number gives 0.
constexpr int32_t truncateToInt32(double value) {
  if (value >= 2147483647.0) return INT32_MAX;
  if (value <= -2147483648.0) return INT32_MIN;
  if (value != value) return 0;
  return static_cast<int32_t>(value);
}

constexpr int32_t saturateToInt32(int64_t value) {
  if (value > INT32_MAX) return INT32_MAX;
  if (value < INT32_MIN) return INT32_MIN;
  return static_cast<int32_t>(value);
}

constexpr int16_t saturateToInt16(int64_t value) {
  if (value > INT16_MAX) return INT16_MAX;
  if (value < INT16_MIN) return INT16_MIN;
  return static_cast<int16_t>(value);
}
