#include <sys/mman.h>

#include "platform/large_blocks.h"

constexpr uintptr_t kPage = 4096;  // blocks of memory may begin within a page

void preferLargePages(void* address, uint64_t bytes) {
#if defined(MADV_HUGEPAGE)
  const auto start = reinterpret_cast<uintptr_t>(address);
  const uintptr_t first = (start + kPage - 1) / kPage * kPage;
  const uintptr_t end = (start + static_cast<uintptr_t>(bytes)) / kPage * kPage;
  // Where the system has none the small ones serve.
  if (end > first) madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
#else
  static_cast<void>(address);
  static_cast<void>(bytes);
#endif
}
