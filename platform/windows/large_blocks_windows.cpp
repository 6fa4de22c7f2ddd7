#include "platform/large_blocks.h"

// Large pages are for processes with a right of their own there.
void preferLargePages(void*, uint64_t) {
}
