// picture_writing: pictures into files of the kinds that resources are made of. Each throws
// std::runtime_error when the file cannot be written.

#pragma once

#include <filesystem>
#include <vector>

#include "resources/artwork/drawing/raster.h"

// 24 bits a pixel.
void writeBitmap(const std::filesystem::path& path, const Picture& picture);

// 8 bits a pixel with a palette of 256 greys; the red channel is taken.
void writeGreyBitmap(const std::filesystem::path& path, const Picture& picture);

// 32 bits a pixel, with the mask that goes with them; pictures of several sizes.
void writeIcon(const std::filesystem::path& path, const std::vector<Picture>& pictures);

void writeCursor(const std::filesystem::path& path, const Picture& picture, int32_t hotX,
                 int32_t hotY);
