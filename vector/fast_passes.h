// fast_passes: the procedures of this folder as one table per instruction set. Each gives the same
// bytes as the plain procedure that stands beside its caller.

#pragma once

#include "vector/colour_passes.h"
#include "vector/composition_passes.h"
#include "vector/field/field_passes.h"
#include "vector/light_passes.h"
#include "vector/surface_passes.h"

struct FastPasses {
  const FieldPasses* field;
  const SurfacePasses* surface;
  const LightPasses* light;
  const ColourPasses* colour;
  const CompositionPasses* composition;
};

// The table of the chosen instruction set; null when the plain passes are to be used.
const FastPasses* fastPasses();

// The table of each set (table_passes.cpp).
namespace baseline {
const FastPasses* passes();
}
namespace sse41 {
const FastPasses* passes();
}
namespace avx2 {
const FastPasses* passes();
}
