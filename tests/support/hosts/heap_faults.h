// heap_faults: counts the module's own blocks and refuses single ones. The test program is linked
// so that the core's calloc comes through here.

#pragma once

#include <cstdint>

// The n-th block from now on is refused, once; 0 refuses none. The count starts anew.
void refuseModuleBlock(int32_t n);

// Blocks asked for since refuseModuleBlock.
int32_t moduleBlocksAsked();
