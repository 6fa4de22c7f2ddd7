#include "vector/table_passes.h"

const FastPasses* MORVALIS_SET::passes() {
  static const FastPasses kPasses = {fieldPasses(), surfacePasses(), lightPasses(), colourPasses(),
                                     compositionPasses()};
  return &kPasses;
}
