// bitmap_path: how the module learns of the pictures that --environment and --texture name. It
// looks for them under the paths that it remembers, which have a limited length.

#pragma once

#include <memory>
#include <string>

#include "hosts/process/file_names.h"

// A checked picture; keeps a short way to it alive when its own path is too long.
struct BitmapPath {
  std::string path;
  std::unique_ptr<TemporaryFolder> shortWay;
};

// Ends the command when there is no picture to be had under this name.
BitmapPath findBitmap(const std::string& file);
