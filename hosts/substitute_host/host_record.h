// host_record: the record that the module is called with, and its beginning and end.

#pragma once

#include <cstdint>

constexpr int32_t kHostMemory = 512 * 1024 * 1024;  // bytes that the host says it has to give

// Back to the source picture with nothing delivered and nothing requested, as a run begins.
void beginRun();
