// reference_number: whole numbers for the slow reference. They compute in 64 bits and count every
// result that 32 bits could not hold, so a test sees when a fast 32-bit version would have wrapped.

#pragma once

#include <cstdint>

inline int64_t referenceBeyond32Bits = 0;  // counted since the last reset; tests run on one thread

struct ReferenceInt {
  int64_t value;

  ReferenceInt(int64_t v = 0) : value(v) {
  }  // NOLINT: plain numbers mix freely with these
};

inline ReferenceInt counted(int64_t v) {
  if (v < INT32_MIN || v > INT32_MAX) ++referenceBeyond32Bits;
  return v;
}

inline ReferenceInt operator+(ReferenceInt a, ReferenceInt b) {
  return counted(a.value + b.value);
}
inline ReferenceInt operator-(ReferenceInt a, ReferenceInt b) {
  return counted(a.value - b.value);
}
inline ReferenceInt operator-(ReferenceInt a) {
  return counted(-a.value);
}
inline ReferenceInt operator*(ReferenceInt a, ReferenceInt b) {
  return counted(a.value * b.value);
}
// Toward zero.
inline ReferenceInt operator/(ReferenceInt a, ReferenceInt b) {
  return counted(a.value / b.value);
}
inline ReferenceInt operator>>(ReferenceInt a, int bits) {
  return counted(a.value >> bits);
}
inline ReferenceInt operator<<(ReferenceInt a, int bits) {
  return counted(a.value * (int64_t{1} << bits));
}
inline ReferenceInt& operator+=(ReferenceInt& a, ReferenceInt b) {
  return a = a + b;
}

inline bool operator==(ReferenceInt a, ReferenceInt b) {
  return a.value == b.value;
}
inline bool operator<(ReferenceInt a, ReferenceInt b) {
  return a.value < b.value;
}
inline bool operator>(ReferenceInt a, ReferenceInt b) {
  return a.value > b.value;
}
inline bool operator<=(ReferenceInt a, ReferenceInt b) {
  return a.value <= b.value;
}
inline bool operator>=(ReferenceInt a, ReferenceInt b) {
  return a.value >= b.value;
}

inline ReferenceInt magnitude(ReferenceInt a) {
  return a < 0 ? -a : a;
}
inline ReferenceInt atLeast(ReferenceInt a, ReferenceInt low) {
  return a < low ? low : a;
}
inline ReferenceInt atMost(ReferenceInt a, ReferenceInt high) {
  return a > high ? high : a;
}
