// row_in_lanes: the quick form of shade_row: the same bytes, a stage at a time over chunks of a
// row (vector/shading_chunk). Settings beyond their ranges, rows with steps like cliffs and buffers
// that overlap are left to the plain form.

#pragma once

#include "shading/row_constants.h"

struct SessionRecord;

// False, with nothing written, where the row needs the plain form.
bool shadeRowInLanes(SessionRecord* session, const RowConstants& row, const HostRows& host);
