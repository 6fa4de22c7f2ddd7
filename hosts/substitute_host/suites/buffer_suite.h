// buffer_suite: large blocks behind opaque ids, which are not addresses.

#pragma once

#include "entry/host_interface.h"

// Lays out the suite as the switches offer it; null when it is absent.
BufferProcs* offerBufferSuite();

// Frees a buffer; false when it is none of the host's.
bool freeBuffer(HostBufferId id);
