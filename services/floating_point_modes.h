// floating_point_modes: hosts come with modes of their own (rounding, precision, traps, denormals
// as zero), and the entries of tables must not depend on them.

#pragma once

#include <cfenv>
#include <cstdint>

struct FloatingPointModes {
  std::fenv_t environment;
  uint32_t vectorControl;  // of the vector unit, where the processor has one of its own
};

// Sets the modes that a program begins with, and keeps those found.
void enterDefaultModes(FloatingPointModes* found);
void restoreModes(const FloatingPointModes& found);
