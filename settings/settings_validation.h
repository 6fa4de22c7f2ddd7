// settings_validation: makes sure that the host holds a settings block.

#pragma once

struct SessionRecord;

// Without a block in the host's parameter handle: allocates one, fills in the defaults and loads
// what is remembered of the user. An existing block keeps its values, in range or not. Sets the
// result word to kMemoryFull when no block can be had.
void validateSettings(SessionRecord* session);

// Locks the block that the host holds, if any, until unlockSettings. A handle that cannot hold the
// settings (left by another version of the module, or dead) is set aside. False, with the result
// word kMemoryFull, when it cannot be locked.
bool lockSettings(SessionRecord* session);
void unlockSettings(SessionRecord* session);
