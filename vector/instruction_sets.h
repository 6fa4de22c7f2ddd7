// instruction_sets: the one place that knows what processors can do. The passes of this folder are
// compiled once per set; which of them a render uses is chosen at its set-up.
//
// MORVALIS_PLAIN=1 in the environment keeps every render on the plain passes, and
// MORVALIS_INSTRUCTIONS=plain, baseline, sse4.1 or avx2 goes no further than that set. Both are
// read once. Besides this folder, only what sets the processor's rounding asks for a set.

#pragma once

#include <cstdint>

// In order: each set includes those before it. kPlain: the plain passes outside this folder.
enum class InstructionSet : int32_t { kPlain, kBaseline, kSse41, kAvx2 };
constexpr int32_t kInstructionSets = 4;

// The best one that this build has code for and this processor runs.
InstructionSet bestInstructionSet();

// The best one, or less when the environment or limitInstructionSet says so.
InstructionSet chosenInstructionSet();

// For tests and benchmarks: from now on no set beyond this one.
void limitInstructionSet(InstructionSet limit);

// "plain", "baseline", "sse4.1" or "avx2".
const char* instructionSetName(InstructionSet set);
