#include "hosts/substitute_host/suites/buffer_suite.h"

#include <cstdint>

#include "hosts/substitute_host/host_ledger.h"
#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_record.h"
#include "hosts/substitute_host/host_state.h"

// Ids fill the whole width of a pointer, so that one cut to 32 bits is unknown, and on 64 bits no
// address looks like them, so that one used as an address faults. The n-th buffer asked for gets
// the n-th id: an id never comes twice.
static HostBufferId nextBufferId() {
  if (host().switches.bufferIdsFromZero && host().bufferIds++ == 0) return 0;
  const uint64_t wide = uint64_t{0x4D56000000001000} + static_cast<uint32_t>(host().allocations);
  return static_cast<HostBufferId>(wide);
}

static BufferBlock* findBlock(HostBufferId id) {
  const auto found = host().buffers.find(id);
  if (found != host().buffers.end()) return &found->second;
  noteMisuse();
  return nullptr;
}

bool freeBuffer(HostBufferId id) {
  return host().buffers.erase(id) == 1;
}

static int16_t MORVALIS_CALL allocateProc(int32_t size, HostBufferId* id) {
  if (callFails("allocateProc")) return kMemoryFull;
  if (!grantAllocation() || host().switches.refuseAllBuffers) return kMemoryFull;
  BufferBlock block;
  block.bytes = newBlock(size);
  if (block.bytes == nullptr) return kMemoryFull;
  block.size = size;
  *id = nextBufferId();
  host().buffers.emplace(*id, std::move(block));
  return kNoError;
}

static void* MORVALIS_CALL lockProc(HostBufferId id, uint8_t /*moveHigh*/) {
  if (callFails("lockProc")) return nullptr;
  BufferBlock* block = findBlock(id);
  if (block == nullptr) return nullptr;
  if (host().switches.moveBuffers && block->wasUnlocked && block->locks == 0) {
    HostBytes moved = movedBlock(block->bytes, block->size);
    if (moved == nullptr) return nullptr;
    block->bytes = std::move(moved);
  }
  ++block->locks;
  return block->bytes.get();
}

static void MORVALIS_CALL unlockProc(HostBufferId id) {
  logCall("unlockProc");
  BufferBlock* block = findBlock(id);
  if (block == nullptr) return;
  if (block->locks > 0) {
    --block->locks;
    block->wasUnlocked = true;
  } else {
    noteMisuse();
  }
}

static void MORVALIS_CALL freeProc(HostBufferId id) {
  logCall("freeProc");
  if (!freeBuffer(id)) noteMisuse();
}

static int32_t MORVALIS_CALL spaceProc() {
  if (callFails("spaceProc")) return 0;
  return kHostMemory;
}

BufferProcs* offerBufferSuite() {
  const SuiteOffer offer = host().switches.bufferSuite;
  if (offer == SuiteOffer::absent) return nullptr;
  BufferProcs* suite = &host().bufferProcs;
  *suite = {kBufferProcsVersion, kBufferProcsCount, allocateProc, lockProc,
            unlockProc,          freeProc,          spaceProc};
  if (offer == SuiteOffer::wrongVersion) suite->bufferProcsVersion = kBufferProcsVersion + 1;
  if (offer == SuiteOffer::shortCount) suite->numBufferProcs = kBufferProcsCount - 1;
  if (offer == SuiteOffer::missingProc) suite->spaceProc = nullptr;
  return suite;
}
