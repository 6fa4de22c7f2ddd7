// row_requests: what the render asks the host for: rows in the final render, the whole reduced
// picture for the preview.

#pragma once

#include <cstdint>

struct SessionRecord;

// Sets the host's rectangles for the machine's row.
void requestRowRects(SessionRecord* session);

// All three rectangles to zero, which tells hosts that the filter wants no more.
void emptyRects(SessionRecord* session);

// Withdraws the last request when it was made at another rate than the next one: hosts do not
// deliver again when only the rate has changed. The host's answer to that, 0 when nothing was
// asked.
int16_t withdrawForRate(SessionRecord* session, int32_t rate);

// Asks for the preview image, at most as large as previewFrame, reduced by `factor` and beginning
// at the preview origin; exchanges it where the host can, with the host's answer in the result
// word, and takes the geometry from what was delivered.
void requestPreviewImage(SessionRecord* session, int32_t factor);
