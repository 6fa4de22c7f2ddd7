// tarnish: how much tarnish gathers in each column of a row, from the curvature of the height
// field.

#pragma once

struct SessionRecord;

// Fills the tarnish row of the line buffer (0 to 256 a column) for row currentRow. False when there
// is none, or when amounts have wrapped and lie below 0, as damaged settings can make them.
bool computeTarnishRow(SessionRecord* session);
