// picture_save: planes to a picture file. A format holds what it can of the rest; WebP keeps no
// colours under alpha 0.

#pragma once

#include <string>

#include "hosts/picture_files/picture_format.h"

// The file as a whole, in its place, or not at all. What the format cannot hold besides the pixels
// goes.
void savePicture(Picture picture, const PictureFormat& format, const SaveChoices& choices,
                 const std::string& file);
