#include "tests/support/hosts/heap_faults.h"

#include <cstddef>

static int32_t refused = 0;
static int32_t asked = 0;

extern "C" void* __real_calloc(size_t count, size_t size);

extern "C" void* __wrap_calloc(size_t count, size_t size) {
  if (++asked == refused) return nullptr;
  return __real_calloc(count, size);
}

void refuseModuleBlock(int32_t n) {
  refused = n;
  asked = 0;
}

int32_t moduleBlocksAsked() {
  return asked;
}
