// host_ledger: who holds which of the host's memory, and whether more may be had.

#pragma once

#include <cstdint>

#include "hosts/substitute_host/host_state.h"

// Counts a handle or buffer that is asked for; false when this one is to be refused.
bool grantAllocation();

// Counts a call on memory that the host does not hold.
void noteMisuse();

// New memory of that many bytes, garbage or zeros as the switches say; null when there is none.
HostBytes newBlock(int64_t size);

// A copy at another address; null when there is no memory.
HostBytes movedBlock(const HostBytes& bytes, int64_t size);
