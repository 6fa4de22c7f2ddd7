// fuzz_input: the fuzzer's bytes, taken one value after the other; zeros when they are used up.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

struct FuzzInput {
  const uint8_t* bytes;
  size_t left;
};

template <typename Value>
Value take(FuzzInput* input) {
  Value value = {};
  const size_t count = std::min(sizeof(value), input->left);
  std::memcpy(&value, input->bytes, count);
  input->bytes += count;
  input->left -= count;
  return value;
}

// From `low` to `high`.
inline int32_t takeBetween(FuzzInput* input, int32_t low, int32_t high) {
  return low + take<uint8_t>(input) % (high - low + 1);
}
