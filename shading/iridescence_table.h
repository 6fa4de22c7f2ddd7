// iridescence_table: the colours of a thin film by slope, summed over the spectrum.

#pragma once

struct SessionRecord;

// Fills the table from iridescence (strength) and iriColors (thickness); needs the session tables.
void buildIridescenceTable(SessionRecord* session);
