// light_stencils: the light's direction as integer weights for a 2 x 2 block of height-field cells;
// their sum is the slope toward the light, so that no normal is ever formed.

#pragma once

#include <cstdint>

struct SessionRecord;

// Stores the stencil of an angle (whole degrees) in a slot; a slot outside 0 to 5 stores nothing.
void setLightStencil(int32_t angle, int32_t slot, SessionRecord* session);
