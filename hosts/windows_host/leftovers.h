// leftovers: what a module leaves in the process that has used it.

#pragma once

#include <cstdint>
#include <string>

// Bytes in use in all heaps of the process, and its bitmaps.
int64_t heapBytes();
int32_t bitmapCount();

// Loads and unloads the module a number of times; the bytes that each of them has cost.
int64_t bytesPerLoad(const std::string& modulePath, int32_t loads);
