#include "hosts/windows_host/leftovers.h"

#include "hosts/windows_host/loaded_module.h"
#include "hosts/windows_host/picture_files.h"
#include "platform/windows/windows_api.h"

int64_t heapBytes() {
  constexpr DWORD kMostHeaps = 64;
  HANDLE heaps[kMostHeaps];
  const DWORD count = GetProcessHeaps(kMostHeaps, heaps);
  int64_t bytes = 0;
  for (DWORD i = 0; i < count && i < kMostHeaps; ++i) {
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(heaps[i], &entry) != FALSE) {
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
    }
  }
  return bytes;
}

// Objects are known by the lower halves of their handles, too.
int32_t bitmapCount() {
  int32_t count = 0;
  for (ULONG_PTR handle = 1; handle <= 0xFFFF; ++handle) {
    count += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) == OBJ_BITMAP ? 1 : 0;
  }
  return count;
}

static void loadOnce(const std::string& modulePath) {
  const std::string reason = loadModule(modulePath);
  if (!reason.empty()) failWith(modulePath + ": " + reason);
  unloadModule();
}

// What the first loads cost may be the system's own.
int64_t bytesPerLoad(const std::string& modulePath, int32_t loads) {
  constexpr int32_t kFirstLoads = 3;
  for (int32_t i = 0; i < kFirstLoads; ++i) loadOnce(modulePath);
  const int64_t before = heapBytes();
  for (int32_t i = 0; i < loads; ++i) loadOnce(modulePath);
  return (heapBytes() - before) / loads;
}
