#include "entry/load_mark.h"

#include <chrono>

uint64_t loadMark() {
  static uint64_t mark = 0;
  if (mark == 0) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    // Two processes may load at the same tick; their addresses differ.
    mark = (static_cast<uint64_t>(ticks) ^ reinterpret_cast<uintptr_t>(&mark)) | 1;
  }
  return mark;
}
