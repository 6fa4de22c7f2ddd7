// picture_load: a picture file to planes.

#pragma once

#include <cstdint>
#include <string>

#include "hosts/picture_files/picture.h"

constexpr int32_t kLargestPictureSide = 32000;  // what the module's 16-bit coordinates allow

// The first picture of a file that is there as a whole. Ends the command, naming the file and the
// reason, when there is none to be had.
Picture loadPicture(const std::string& file);
