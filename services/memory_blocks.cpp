#include "services/memory_blocks.h"

#include <cstdlib>

#include "platform/large_blocks.h"

void* newModuleBlock(uint64_t bytes) {
  if (bytes > SIZE_MAX) return nullptr;
  void* address = std::calloc(bytes == 0 ? 1 : static_cast<size_t>(bytes), 1);
  if (address != nullptr && bytes >= kLargeBlock) preferLargePages(address, bytes);
  return address;
}

void freeModuleBlock(void* address) {
  std::free(address);
}
