// set_procedures: small pieces for the files that are compiled once per instruction set. Everything
// here is static, so that no set's code can take another's place when the program is linked.

#pragma once

#include <cstdint>

// Four bytes from anywhere, the first in the lowest bits.
static inline int32_t loadWord(const uint8_t* from) {
  int32_t word;
  __builtin_memcpy(&word, from, sizeof(word));
  return word;
}
