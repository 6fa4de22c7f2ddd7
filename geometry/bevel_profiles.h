// bevel_profiles: the thirteen cross-sections of the bevel, as a table from height-field value to
// height.

#pragma once

#include <cstdint>

struct SessionRecord;

// Fills the profile table and depthLow from shape, effective radius and height.
void buildProfile(SessionRecord* session);

// Replaces every cell of field row currentRow by its profile entry.
void mapProfileRow(SessionRecord* session);
