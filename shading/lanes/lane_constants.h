// lane_constants: what holds for all pixels of a render or a row, in the form of the lanes.

#pragma once

#include "shading/row_constants.h"

struct SessionRecord;
struct ShadingRow;

// Once per render: the tables of the quick form, from all others.
void prepareLanes(SessionRecord* session);

// False when a value lies beyond the range that settings within theirs give.
bool laneConstants(const SessionRecord* session, const RowConstants& row, ShadingRow* lanes);
