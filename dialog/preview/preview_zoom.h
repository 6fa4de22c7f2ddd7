// preview_zoom: the reductions that the preview goes through, and the one that it opens with.

#pragma once

#include <cstdint>

struct DialogState;

// The next reduction in (to 1) and out (to `fit`): every whole number to 8, then powers of two.
int32_t zoomedIn(int32_t scale);
int32_t zoomedOut(int32_t scale, int32_t fit);

// Of a large picture that the host has delivered whole: moves scale and origin of the settings to
// where a bevel can be seen, at the largest shape or at full size. False when all stays as it is.
bool openAtBevel(DialogState* dialog);
