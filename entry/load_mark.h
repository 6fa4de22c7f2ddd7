// load_mark: tells one load of the module from the next. Hosts give back our blocks as byte
// copies, sometimes to a freshly loaded module in another process: the plain values in them are
// good, the pointers are dead. A block whose mark is not today's loses its pointers.

#pragma once

#include <cstdint>

// The same value as long as the module stays loaded, never 0.
uint64_t loadMark();
