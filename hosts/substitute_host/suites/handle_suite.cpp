#include "hosts/substitute_host/suites/handle_suite.h"

#include <algorithm>
#include <cstring>

#include "hosts/substitute_host/host_ledger.h"
#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"

// The block behind a handle; a handle that the host does not hold counts as a misuse.
static HandleBlock* findBlock(Handle handle) {
  const auto found = host().handles.find(handle);
  if (found != host().handles.end()) return &found->second;
  noteMisuse();
  return nullptr;
}

static Handle createHandle(int32_t size, bool hostOwned) {
  HandleBlock block;
  block.bytes = newBlock(size);
  if (block.bytes == nullptr) return nullptr;
  block.master = std::make_unique<void*>(block.bytes.get());
  block.size = size;
  block.hostOwned = hostOwned;
  const Handle handle = block.master.get();
  host().handles.emplace(handle, std::move(block));
  return handle;
}

Handle newHostHandle(int32_t size) {
  return createHandle(size, true);
}

bool freeHandle(Handle handle) {
  host().descriptors.erase(handle);
  return host().handles.erase(handle) == 1;
}

static Handle MORVALIS_CALL newProc(int32_t size) {
  if (callFails("newProc")) return nullptr;
  return grantAllocation() ? createHandle(size, false) : nullptr;
}

static void MORVALIS_CALL disposeProc(Handle handle) {
  logCall("disposeProc");
  if (!freeHandle(handle)) noteMisuse();
}

static void MORVALIS_CALL disposeRegularHandleProc(Handle handle) {
  logCall("disposeRegularHandleProc");
  if (!freeHandle(handle)) noteMisuse();
}

static int32_t MORVALIS_CALL getSizeProc(Handle handle) {
  if (callFails("getSizeProc")) return 0;
  const HandleBlock* block = findBlock(handle);
  return block == nullptr ? 0 : block->size;
}

// The block always moves, so that an address kept across the call is stale.
static int16_t MORVALIS_CALL setSizeProc(Handle handle, int32_t size) {
  if (callFails("setSizeProc")) return kMemoryFull;
  HandleBlock* block = findBlock(handle);
  if (block == nullptr) return kBadParameter;
  HostBytes bytes = newBlock(size);
  if (bytes == nullptr) return kMemoryFull;
  const int32_t kept = std::min(size, block->size);
  if (kept > 0) std::memcpy(bytes.get(), block->bytes.get(), static_cast<size_t>(kept));
  block->bytes = std::move(bytes);
  block->size = size;
  *block->master = block->bytes.get();
  return kNoError;
}

static void* MORVALIS_CALL lockProc(Handle handle, uint8_t /*moveHigh*/) {
  if (callFails("lockProc")) return nullptr;
  HandleBlock* block = findBlock(handle);
  if (block == nullptr) return nullptr;
  ++block->locks;
  return block->bytes.get();
}

static void MORVALIS_CALL unlockProc(Handle handle) {
  logCall("unlockProc");
  HandleBlock* block = findBlock(handle);
  if (block == nullptr) return;
  if (block->locks > 0) {
    --block->locks;
  } else {
    noteMisuse();
  }
}

static void MORVALIS_CALL recoverSpaceProc(int32_t /*size*/) {
  logCall("recoverSpaceProc");
}

HandleProcs* offerHandleSuite() {
  const SuiteOffer offer = host().switches.handleSuite;
  if (offer == SuiteOffer::absent) return nullptr;
  HandleProcs* suite = &host().handleProcs;
  *suite = {kHandleProcsVersion,
            kHandleProcsCount + 1,
            newProc,
            disposeProc,
            getSizeProc,
            setSizeProc,
            lockProc,
            unlockProc,
            recoverSpaceProc,
            disposeRegularHandleProc};
  if (offer == SuiteOffer::wrongVersion) suite->handleProcsVersion = kHandleProcsVersion + 1;
  if (offer == SuiteOffer::shortCount) suite->numHandleProcs = kHandleProcsCount - 1;
  if (offer == SuiteOffer::missingProc) suite->setSizeProc = nullptr;
  return suite;
}
