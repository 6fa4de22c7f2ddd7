// memory_blocks: the module's own memory, from the C library.

#pragma once

#include <cstdint>

// A zero-filled block of at least one byte, or null.
void* newModuleBlock(uint64_t bytes);

// Releases a block of newModuleBlock; null is ignored.
void freeModuleBlock(void* address);
