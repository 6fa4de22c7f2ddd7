// picture_packing: the pictures of one scale into one file, which the dialogs unpack.

#pragma once

#include <filesystem>
#include <vector>

#include "resources/artwork/drawing/raster.h"

struct PackedPicture {
  int32_t id;  // an icon's with kIconNumbers added
  Picture picture;
  bool isRough;  // values may change by one: for what is rendered or shaded
};

// Throws std::runtime_error when the file cannot be written.
void writePack(const std::filesystem::path& path, const std::vector<PackedPicture>& pictures);
