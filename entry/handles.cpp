#include "entry/handles.h"

#include "services/memory_blocks.h"

struct MasterBlock {
  void* data;  // must come first: a handle is read through its first word
  int32_t bytes;
  MasterBlock* next;  // of the handles that live
};

static MasterBlock* livingHandles = nullptr;

static MasterBlock* masterOf(Handle handle) {
  return reinterpret_cast<MasterBlock*>(handle);
}

bool hostHandlesUsable(const HandleProcs* handleProcs) {
  return handleProcs != nullptr && handleProcs->handleProcsVersion == kHandleProcsVersion &&
         static_cast<uint16_t>(handleProcs->numHandleProcs) >= kHandleProcsCount &&
         handleProcs->newProc != nullptr && handleProcs->disposeProc != nullptr &&
         handleProcs->getSizeProc != nullptr && handleProcs->setSizeProc != nullptr;
}

// Of the host's own: it may begin to offer its suite, or cease to, while a handle lives.
static bool isHostHandle(const FilterRecord* filter, Handle handle) {
  return hostHandlesUsable(filter->handleProcs) && !isModuleHandle(handle);
}

Handle newHandle(const FilterRecord* filter, int32_t bytes) {
  if (hostHandlesUsable(filter->handleProcs)) return filter->handleProcs->newProc(bytes);
  return newModuleHandle(bytes);
}

void disposeHandle(const FilterRecord* filter, Handle handle) {
  if (isHostHandle(filter, handle)) {
    filter->handleProcs->disposeProc(handle);
  } else {
    disposeModuleHandle(handle);
  }
}

void* lockHandle(const FilterRecord* filter, Handle handle, bool moveHigh) {
  const HandleProcs* procs = filter->handleProcs;
  if (!isHostHandle(filter, handle)) return isModuleHandle(handle) ? *handle : nullptr;
  return procs->lockProc != nullptr ? procs->lockProc(handle, moveHigh ? 1 : 0) : *handle;
}

void unlockHandle(const FilterRecord* filter, Handle handle) {
  const HandleProcs* procs = filter->handleProcs;
  if (isHostHandle(filter, handle) && procs->unlockProc != nullptr) procs->unlockProc(handle);
}

bool handleMayHold(const FilterRecord* filter, Handle handle, int32_t bytes) {
  if (!isHostHandle(filter, handle)) return moduleHandleSize(handle) == bytes;
  const int32_t size = filter->handleProcs->getSizeProc(handle);
  return size <= 0 || size >= bytes;
}

Handle newModuleHandle(int32_t bytes) {
  if (bytes < 0) return nullptr;
  auto* master = static_cast<MasterBlock*>(newModuleBlock(sizeof(MasterBlock)));
  if (master == nullptr) return nullptr;
  master->data = newModuleBlock(static_cast<uint64_t>(bytes));
  if (master->data == nullptr) {
    freeModuleBlock(master);
    return nullptr;
  }
  master->bytes = bytes;
  master->next = livingHandles;
  livingHandles = master;
  return &master->data;
}

bool isModuleHandle(Handle handle) {
  MasterBlock* master = livingHandles;
  while (master != nullptr && &master->data != handle) master = master->next;
  return master != nullptr && handle != nullptr;
}

int32_t moduleHandleSize(Handle handle) {
  return isModuleHandle(handle) ? masterOf(handle)->bytes : 0;
}

void disposeModuleHandle(Handle handle) {
  if (!isModuleHandle(handle)) return;
  MasterBlock* master = masterOf(handle);
  MasterBlock** link = &livingHandles;
  while (*link != master) link = &(*link)->next;
  *link = master->next;
  freeModuleBlock(master->data);
  freeModuleBlock(master);
}
