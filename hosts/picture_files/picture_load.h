// picture_load: a picture file to planes.

#pragma once

#include <cstdint>
#include <string>

#include "hosts/picture_files/picture.h"

constexpr int32_t kLargestPictureSide = 32000;  // what the module's 16-bit coordinates allow

// Which picture of a file is wanted, from 1 on; 0 for "". Ends the command when it is no number.
int32_t parseFrame(const std::string& text);

// A picture of a file that is there as a whole; `number` counts from 1. Ends the command, naming
// the file and the reason, when there is none to be had.
Picture loadPicture(const std::string& file, int32_t number = 1);

// The same of a file's contents.
Picture decodePicture(const FileBytes& contents, const std::string& file, int32_t number = 1);

// Makes what the file says in words fit the picture, which stands upright now.
void standNotesUpright(Picture* picture);

// The reason against a picture of such sides, or "".
std::string refuseSides(int64_t width, int64_t height);
