// png_write: pictures as PNG files, packed quickly or closely.

#pragma once

#include <vector>

#include "hosts/picture_files/picture.h"
#include "hosts/process/file_access.h"

constexpr int kQuickPacking =
    -1;  // about a tenth larger than the usual level 6, in a tenth of the time

// Grey or RGB, with alpha where the picture has some, in its depth. `level` is 0 to 9, or
// kQuickPacking.
void writePng(const Picture& picture, int level, OutputFile* output);

// What is said besides the pixels, as parts of a file.
std::vector<PngPart> pngParts(const PictureMetadata& metadata);
