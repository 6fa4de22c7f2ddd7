// fast_passes: the procedures of this folder as one table per instruction set. Each gives the same
// bytes as the plain procedure that stands beside its caller.

#pragma once

#include "vector/colour_passes.h"
#include "vector/composition_passes.h"
#include "vector/light_passes.h"
#include "vector/surface_passes.h"

struct FastPasses {
  const SurfacePasses* surface;
  const LightPasses* light;
  const ColourPasses* colour;
  const CompositionPasses* composition;
};

// The table of the chosen instruction set; null when the plain passes are to be used.
const FastPasses* fastPasses();

// One name space per set, each compiled with its instructions.
namespace baseline {
const SurfacePasses* surfacePasses();
const LightPasses* lightPasses();
const ColourPasses* colourPasses();
const CompositionPasses* compositionPasses();
}  // namespace baseline
namespace sse41 {
const SurfacePasses* surfacePasses();
const LightPasses* lightPasses();
const ColourPasses* colourPasses();
const CompositionPasses* compositionPasses();
}  // namespace sse41
namespace avx2 {
const SurfacePasses* surfacePasses();
const LightPasses* lightPasses();
const ColourPasses* colourPasses();
const CompositionPasses* compositionPasses();
}  // namespace avx2
