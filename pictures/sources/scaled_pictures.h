// scaled_pictures: the pictures of the dialogs at any of the scales, unpacked when they are first
// asked for.

#pragma once

#include <cstdint>

#include "platform/resource_access.h"

// A bitmap, icon or cursor by its number, with the kind's added. One that has no picture at a scale
// is reduced from twice or the largest of them. The pixels stay until another scale is asked for,
// or forgetScaledPictures.
bool findScaledPicture(int32_t id, int32_t scale, ResourcePicture* picture);
void forgetScaledPictures();
