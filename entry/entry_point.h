// entry_point: the one procedure that hosts call.

#pragma once

#include <cstdint>

#include "platform/export.h"

// selector: 0 About, 1 Parameters, 2 Prepare, 3 Start, 4 Continue, 5 Finish.
// parameterBlock: the host's filter record, for About its about record.
// dataSlot: where the host keeps the session record's handle between calls, 0 at first.
// result: the host's result word; every call stores one, 0 for success.
MORVALIS_EXPORT void MORVALIS_CALL ENTRYPOINT(int16_t selector, void* parameterBlock,
                                              intptr_t* dataSlot, int16_t* result);
