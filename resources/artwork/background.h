// background: the ground of the main dialog, and the pictures that stand on it as part of it.

#pragma once

#include "resources/artwork/drawing/raster.h"

constexpr int32_t kTrackWidth = 135;
constexpr int32_t kSizeTrackWidth = 70;
constexpr int32_t kTrackHeight = 12;

Picture drawBackground();  // 680 x 370

// Cut out of the ground where they stand, so that no seam shows.
Picture drawTextureLink(const Picture& background);  // between the shape and texture pickers
Picture drawBlendSymbol(const Picture& background);  // beside the blend-mode picker
