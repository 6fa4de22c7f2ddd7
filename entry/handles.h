// handles: the blocks that outlive a call (session record, settings). From the host's handle
// services where it offers them in the form we trust, else the module's own; code that holds a
// handle does not know which kind it is.

#pragma once

#include <cstdint>

#include "entry/host_interface.h"

// Version 1 with at least seven procedures, and new, dispose, getSize and setSize present.
bool hostHandlesUsable(const HandleProcs* handleProcs);

// A handle of the host or of our own; null on failure.
Handle newHandle(const FilterRecord* filter, int32_t bytes);
void disposeHandle(const FilterRecord* filter, Handle handle);

// The block's address, which holds until it is unlocked; null when the host cannot lock it.
void* lockHandle(const FilterRecord* filter, Handle handle, bool moveHigh);
void unlockHandle(const FilterRecord* filter, Handle handle);

// False when the host knows the block to be smaller than that, as one left by another version of
// the module may be. Hosts that cannot tell answer 0. One of the module's own has to be of that
// size: the number of a dead one may have come again for a block of another kind.
bool handleMayHold(const FilterRecord* filter, Handle handle, int32_t bytes);

// The module's own handles: a master block whose first word is the address of the zero-filled
// data block. Null when either cannot be had.
Handle newModuleHandle(int32_t bytes);
int32_t moduleHandleSize(Handle handle);  // bytes; 0 for a handle that is not ours
void disposeModuleHandle(Handle handle);  // a handle that is not ours is ignored

// Whether newModuleHandle has made this handle since the module was loaded, and it has not been
// disposed of. Handles come back from hosts and from copied blocks, sometimes dead.
bool isModuleHandle(Handle handle);
