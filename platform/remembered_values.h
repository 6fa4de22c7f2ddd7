// remembered_values: what a back end supplies to keep the module's three paths between runs.

#pragma once

#include <cstdint>

// Copies the text kept under a name into a buffer of `bytes` bytes, zero-terminated (cut if it is
// too long). False, with the buffer as it was, when there is none.
bool readRememberedValue(const char* name, char* text, int32_t bytes);

// Keeps a text under a name; silent when that is not possible.
void writeRememberedValue(const char* name, const char* text);
