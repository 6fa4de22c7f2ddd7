// picture_warnings: what the user is told of a picture's way through the program.

#pragma once

#include <string>

#include "hosts/picture_files/picture_format.h"

// Tells what of the file will not be in a result of that format, if there is something.
// With `stripped` its words and notes are not missed.
void warnOfLoss(const Picture& picture, const PictureFormat& format, bool stripped,
                const std::string& file);
