// icons_and_cursors: the pictures that stand out from whatever is under them.

#pragma once

#include "resources/artwork/drawing/raster.h"

Picture drawModuleIcon(int32_t side);  // 16, 32, 48, 128 or 256
Picture drawAlertIcon();               // 32 x 32
Picture drawCheckMark();               // 32 x 32, the mark in the top left corner

// 32 x 32; the hot spot of both is (8, 8).
Picture drawOpenHand();
Picture drawClosedHand();
