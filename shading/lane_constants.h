// lane_constants: what holds for all pixels of a row, in 16 bits.

#pragma once

#include "shading/row_constants.h"

struct SessionRecord;
struct ShadingRow;

// False when a value lies beyond the range that settings within theirs give.
bool laneConstants(const SessionRecord* session, const RowConstants& row, ShadingRow* lanes);
