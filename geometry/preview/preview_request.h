// preview_request: what the preview asks the host for: the whole reduced picture at once.

#pragma once

#include <cstdint>

struct SessionRecord;

// Asks for the preview image, at most as large as previewFrame, reduced by `factor` and beginning
// at the preview origin; exchanges it where the host can, with the host's answer in the result
// word, and takes the geometry from it. The selection is asked for with a margin, within the
// picture, and of the frame alone from a host that does not deliver that.
void requestPreviewImage(SessionRecord* session, int32_t factor);
