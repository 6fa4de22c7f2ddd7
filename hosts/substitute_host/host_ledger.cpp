#include "hosts/substitute_host/host_ledger.h"

#include <cstring>
#include <new>

#include "platform/large_blocks.h"

// The largest picture, 32000 pixels a side and 4 planes. Beyond it a request is a fault, and
// granting it would only exhaust the machine.
constexpr int64_t kLargestBlock = int64_t{32000} * 32000 * 4;

bool grantAllocation() {
  ++host().allocations;
  return host().allocations != host().switches.refuseAllocationAt;
}

void noteMisuse() {
  ++host().misuses;
}

static HostBytes rawBlock(int64_t size) {
  if (size < 0 || size > kLargestBlock) return nullptr;
  HostBytes block(new (std::nothrow) uint8_t[static_cast<size_t>(size)]);
  if (block != nullptr && static_cast<uint64_t>(size) >= kLargeBlock) {
    preferLargePages(block.get(), static_cast<uint64_t>(size));
  }
  return block;
}

HostBytes newBlock(int64_t size) {
  HostBytes block = rawBlock(size);
  if (block != nullptr && size > 0) {
    std::memset(block.get(), host().switches.dirtyMemory ? kGarbage : 0, static_cast<size_t>(size));
  }
  return block;
}

HostBytes movedBlock(const HostBytes& bytes, int64_t size) {
  HostBytes block = rawBlock(size);
  if (block != nullptr && size > 0) {
    std::memcpy(block.get(), bytes.get(), static_cast<size_t>(size));
  }
  return block;
}

HostLedger hostLedger() {
  HostLedger ledger = {};
  for (const auto& [handle, block] : host().handles) {
    if (block.hostOwned) continue;
    ++ledger.handles;
    if (block.locks > 0) ++ledger.lockedHandles;
  }
  for (const auto& [id, block] : host().buffers) {
    ++ledger.buffers;
    if (block.locks > 0) ++ledger.lockedBuffers;
  }
  ledger.allocations = host().allocations;
  ledger.misuses = host().misuses;
  return ledger;
}
