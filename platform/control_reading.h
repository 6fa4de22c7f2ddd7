// control_reading: what a control is and holds, in words, for people who cannot see it. The core
// fills it in, the back end passes it on to its system's means for that.

#pragma once

#include <cstdint>

enum class ControlRole {
  button,
  slider,
  toggle,
  menu,   // opens a column of choices
  dial,   // a direction
  image,  // that can be moved
};

struct ControlReading {
  ControlRole role;
  const char* name;
  char value[64];     // as people say it, "" for none
  char meaning[160];  // one line
  bool hasRange;
  int32_t amount;  // within the range
  int32_t minimum;
  int32_t maximum;
  bool on;  // of a toggle
  bool disabled;
};

// Reads a control of a window at any time; false for one that has nothing to say.
using ControlReader = bool (*)(void* context, int32_t id, ControlReading* reading);
