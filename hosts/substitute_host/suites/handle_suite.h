// handle_suite: relocatable blocks. The master pointer is the first and only word behind a handle.

#pragma once

#include <cstdint>

#include "entry/host_interface.h"

// Lays out the suite as the switches offer it; null when it is absent.
HandleProcs* offerHandleSuite();

// A block of the host's own, outside the module's ledger; null when there is no memory.
Handle newHostHandle(int32_t size);

// Frees a block of either side; false when it is none of the host's.
bool freeHandle(Handle handle);
