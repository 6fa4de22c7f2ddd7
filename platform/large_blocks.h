// large_blocks: how the system backs large blocks of memory.

#pragma once

#include <cstdint>

// Blocks from this size on are worth the call. Bytes.
constexpr uint64_t kLargeBlock = 4 << 20;

// Asks for large pages for a block that is not yet touched and will be used whole: the first touch
// of each page costs more than the work on it. Changes nothing that a program could see.
void preferLargePages(void* address, uint64_t bytes);
