// render_buffers: the geometry of a render and its six large buffers, from Start to the end of the
// run.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

struct SessionRecord;

// Takes the size to render from a rectangle, already reduced by `factor` (below 1 counts as 1).
// An inverted rectangle has no pixels.
void setGeometry(SessionRecord* session, const Rectangle& rect, int32_t factor);

// The six sizes for the geometry; tells the host their sum plus 1000 in bufferSpace.
void computeBufferSizes(SessionRecord* session);

// Allocates the six buffers, each from the host or else as a block of our own. Without one of the
// first four all are freed and the result word becomes kRenderBuffersMissing; the two picture
// tables are left for Start to check.
void allocateBuffers(SessionRecord* session);

// Releases the pictures and the six buffers. Safe to call twice. Buffers of a host that has ceased
// to offer its buffer services stay with that host.
void freeBuffers(SessionRecord* session);

// Whether the host's record still says what the final render was started for.
bool recordStands(const SessionRecord* session);

// Whether the buffers hold a render of the present geometry.
bool geometryFitsBuffers(const SessionRecord* session);
