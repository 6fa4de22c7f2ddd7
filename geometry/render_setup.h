// render_setup: everything that can be known before the rows start.

#pragma once

struct SessionRecord;

// Builds the tables for the present geometry and puts the row machine before its first row. When
// the buffers cannot hold the geometry, the machine stands still and the result word becomes
// kRenderBuffersMissing.
void renderSetUp(SessionRecord* session);

// Its two halves: everything but the height field, which needs no geometry; and the field's first
// pass. Without `buildHeightField` the machine begins with the shading.
void setUpSurface(SessionRecord* session);
void beginField(SessionRecord* session);
