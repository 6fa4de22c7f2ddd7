// current_thread: tells threads apart.

#pragma once

#include <cstdint>

// A number of the calling thread, which no other one has while it runs; never 0.
uintptr_t currentThread();
