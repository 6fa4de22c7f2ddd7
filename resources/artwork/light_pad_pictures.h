// light_pad_pictures: the dials on which the directions of the two lights are dragged, and their
// handle.

#pragma once

#include "resources/artwork/drawing/raster.h"

// Light 1 or 2; 85 x 85.
Picture drawLightPad(int32_t light);

// 32 x 32, the handle's middle at (2, 2).
Picture drawLightHandle();
