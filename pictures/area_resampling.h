// area_resampling: a picture at another size, by exact area averaging. A target pixel is the mean
// of the source area that it covers, partly covered pixels by their share, rounded to nearest;
// integers throughout, so that every system gives the same bytes.

#pragma once

#include <cstdint>

struct DecodedBitmap;
struct PictureSurface;

// Fills the surface's top-left width x height pixels with the whole source picture.
void resampleByArea(const DecodedBitmap& source, PictureSurface* target, int32_t width,
                    int32_t height);
