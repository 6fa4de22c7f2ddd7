// row_requests: what the render asks the host for: rows in the final render, the whole reduced
// picture for the preview.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

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

// Whether the host has delivered the selection of that rectangle.
bool maskIsDelivered(const FilterRecord* filter, const Rectangle& rect);

// Asks for the preview image, at most as large as previewFrame, reduced by `factor` and beginning
// at the preview origin; exchanges it where the host can, with the host's answer in the result
// word, and takes the geometry from it. The selection is asked for with a margin, within the
// picture, and of the frame alone from a host that does not deliver that.
void requestPreviewImage(SessionRecord* session, int32_t factor);
