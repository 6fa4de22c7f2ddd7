// table_passes: what the files that are compiled once per instruction set hand to their set's
// table.

#pragma once

#include "vector/fast_passes.h"

namespace MORVALIS_SET {
const FieldPasses* fieldPasses();
const SurfacePasses* surfacePasses();
const LightPasses* lightPasses();
const ColourPasses* colourPasses();
const CompositionPasses* compositionPasses();
}  // namespace MORVALIS_SET
