// host_buffers: the host's buffer services, where it offers them in the form we trust.
// Every operation tests that first.

#pragma once

#include <cstdint>

#include "entry/host_interface.h"

// Version 2 with at least five procedures, all of the five present.
bool hostBuffersUsable(const BufferProcs* bufferProcs);

// 0 for success; kMemoryFull without usable services. `id` is 0 unless the host set it.
int16_t allocateHostBuffer(const FilterRecord* filter, int32_t bytes, HostBufferId* id);

// The buffer's address, which holds until it is unlocked; null without usable services.
void* lockHostBuffer(const FilterRecord* filter, HostBufferId id, bool moveHigh);
void unlockHostBuffer(const FilterRecord* filter, HostBufferId id);
void freeHostBuffer(const FilterRecord* filter, HostBufferId id);
