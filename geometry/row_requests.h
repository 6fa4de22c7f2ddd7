// row_requests: what the final render asks the host for, row after row, and what all requests have
// in common.

#pragma once

#include <cstdint>

struct FilterRecord;
struct SessionRecord;

// All planes of input and output, with the mask, at a rate (16.16 fixed point).
void requestAllPlanes(FilterRecord* filter, int32_t rate);

// Sets the host's rectangles for the machine's row.
void requestRowRects(SessionRecord* session);

// All three rectangles to zero, which tells hosts that the filter wants no more.
void emptyRects(SessionRecord* session);

// Withdraws the last request when it was made at another rate than the next one: hosts do not
// deliver again when only the rate has changed. The host's answer to that, 0 when nothing was
// asked.
int16_t withdrawForRate(SessionRecord* session, int32_t rate);
