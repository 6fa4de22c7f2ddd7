// fast_passes: the procedures of this folder as one table per instruction set. Each gives the same
// bytes as the plain procedure that stands beside its caller.

#pragma once

#include "vector/field_passes.h"
#include "vector/surface_passes.h"

struct FastPasses {
  const FieldPasses* field;
  const SurfacePasses* surface;
};

// The table of the chosen instruction set; null when the plain passes are to be used.
const FastPasses* fastPasses();

// One name space per set, each compiled with its instructions.
namespace baseline {
const FieldPasses* fieldPasses();
const SurfacePasses* surfacePasses();
}  // namespace baseline
namespace sse41 {
const FieldPasses* fieldPasses();
const SurfacePasses* surfacePasses();
}  // namespace sse41
namespace avx2 {
const FieldPasses* fieldPasses();
const SurfacePasses* surfacePasses();
}  // namespace avx2
