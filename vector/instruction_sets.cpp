#include "vector/instruction_sets.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "vector/fast_passes.h"

constexpr const char* kNames[kInstructionSets] = {"plain", "baseline", "sse4.1", "avx2"};

const char* instructionSetName(InstructionSet set) {
  return kNames[static_cast<int32_t>(set)];
}

InstructionSet bestInstructionSet() {
#if defined(MORVALIS_X86_SETS)
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2")) return InstructionSet::kAvx2;
  if (__builtin_cpu_supports("sse4.1")) return InstructionSet::kSse41;
#endif
  return InstructionSet::kBaseline;
}

static InstructionSet limitOfEnvironment() {
  const char* plain = std::getenv("MORVALIS_PLAIN");
  if (plain != nullptr && std::strcmp(plain, "1") == 0) return InstructionSet::kPlain;
  const char* named = std::getenv("MORVALIS_INSTRUCTIONS");
  for (int32_t i = 0; named != nullptr && i < kInstructionSets; ++i) {
    if (std::strcmp(named, kNames[i]) == 0) return static_cast<InstructionSet>(i);
  }
  return InstructionSet::kAvx2;
}

static InstructionSet& limitInForce() {
  static InstructionSet limit = limitOfEnvironment();
  return limit;
}

void limitInstructionSet(InstructionSet limit) {
  limitInForce() = limit;
}

InstructionSet chosenInstructionSet() {
  return std::min(limitInForce(), bestInstructionSet());
}

const FastPasses* fastPasses() {
  switch (chosenInstructionSet()) {
    case InstructionSet::kPlain:
      return nullptr;
#if defined(MORVALIS_X86_SETS)
    case InstructionSet::kAvx2:
      return avx2::passes();
    case InstructionSet::kSse41:
      return sse41::passes();
#endif
    default:
      return baseline::passes();
  }
}
