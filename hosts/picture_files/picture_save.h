// picture_save: planes to a picture file. A format holds what it can of the rest; WebP keeps no
// colours under alpha 0.

#pragma once

#include <string>

#include "hosts/picture_files/formats_library.h"
#include "hosts/picture_files/picture_format.h"

// The file as a whole, in its place, or not at all. What the format cannot hold besides the pixels
// goes.
void savePicture(Picture picture, const PictureFormat& format, const SaveChoices& choices,
                 const std::string& file);

// The same for every picture of a file, which is here with its contents, each after `change`; of a
// format that holds them all.
void convertPictures(const FileBytes& contents, const std::string& image,
                     const PictureFormat& format, const SaveChoices& choices,
                     const ChangePicture& change, const std::string& file);
