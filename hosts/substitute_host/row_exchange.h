// row_exchange: takes the module's output rows and delivers the rows it asks for next.

#pragma once

#include <cstdint>

#include "entry/host_interface.h"

// One exchange: the last output buffer goes into the filtered picture, then mask, input and output
// are delivered as the record asks. A buffer whose rectangle is the last one's keeps what it
// holds. Returns the service's result; after a failure nothing is delivered.
int16_t exchangeRows();

// The module's door to exchangeRows; null when the switches withhold it.
AdvanceStateProc offerAdvanceState();

// Frees the delivered buffers without storing the output; the data fields become null.
void releaseRows();
