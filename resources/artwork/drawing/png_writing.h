// png_writing: pictures into PNG files, for what the desktop shows of the program. Packed by
// zlib, whose bytes are the same in all of its versions that systems have.

#pragma once

#include <filesystem>

#include "resources/artwork/drawing/raster.h"

// 32 bits a pixel. Throws std::runtime_error when the file cannot be written.
void writePng(const std::filesystem::path& path, const Picture& picture);
