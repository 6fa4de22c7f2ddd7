// tarnish: how much tarnish gathers in each column of a row, from the curvature of the height
// field.

#pragma once

struct SessionRecord;

// Fills the tarnish row of the line buffer (0 to 256 a column) for row currentRow.
void computeTarnishRow(SessionRecord* session);
