// menu_pictures: the 32 x 32 pictures of the three picture menus, made with the effect itself.

#pragma once

#include "resources/artwork/drawing/raster.h"

// A disc with this bevel, cut in half: the half from above, and the face of the cut below it.
Picture drawShapePicture(int32_t shape);

// The texture of a choice; a sheet with a picture for the picture file.
Picture drawTexturePicture(int32_t textureChoice);

// A gold disc over a picture of light and dark colours, blended with it in this mode.
Picture drawBlendPicture(int32_t blendMode);
