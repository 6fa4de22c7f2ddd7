// mask_copy: the selection of the whole picture at full size, for a preview that is exact: how the
// height field is smoothed depends, by a step of 1 here and there, on every shape of the picture.

#pragma once

#include "services/rectangle.h"

struct FilterRecord;
struct SessionRecord;

// Asks the host for it, band by band, where there is memory for it and the host exchanges rows.
// What the host has delivered before is gone then. A failure leaves the copy incomplete, and is
// not tried again in this run.
void takeMaskCopy(SessionRecord* session);

// Safe to call twice.
void freeMaskCopy(SessionRecord* session);

// Whether the host has delivered the selection of that rectangle.
bool maskIsDelivered(const FilterRecord* filter, const Rectangle& rect);
