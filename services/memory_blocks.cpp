#include "services/memory_blocks.h"

#include <cstdlib>

void* newModuleBlock(uint64_t bytes) {
  if (bytes > SIZE_MAX) return nullptr;
  return std::calloc(bytes == 0 ? 1 : static_cast<size_t>(bytes), 1);
}

void freeModuleBlock(void* address) {
  std::free(address);
}
