// remembered_values: what a back end supplies to keep the module's three paths between runs.

#pragma once

#include <cstdint>

// Copies the text kept under a name into a buffer of `bytes` bytes, zero-terminated (cut if it is
// too long). False, with the buffer as it was, when there is none.
bool readRememberedValue(const char* name, char* text, int32_t bytes);

// Size of the fields that hold the paths; a text, its zero byte, and whatever stands behind it.
constexpr int32_t kRememberedBytes = 260;

// Keeps the text of a field under a name, on some systems with every byte of the field; silent when
// that is not possible. `atOnce`: brings it to the disk before it returns.
void writeRememberedField(const char* name, const char field[kRememberedBytes], bool atOnce);

// The same for a text alone, cut to what a field holds.
void writeRememberedValue(const char* name, const char* text);
