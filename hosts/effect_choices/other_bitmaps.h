// other_bitmaps: environment and texture pictures that are no bitmaps. The module reads them by the
// procedure below; other programs that share the presets need bitmaps.

#pragma once

#include <string>

// From here on the module takes pictures of every format that is read here.
void allowOtherPictures();

// Ends the command, naming the file and the reason, when the module cannot take it.
void checkPictureForModule(const std::string& file);

bool isWindowsBitmap(const std::string& file);

// Puts a picture where the preset's are looked for, as a bitmap, and gives its path there. Ends the
// command when another file of that name is there, or the preset could not name it.
std::string placeBesidePreset(const std::string& picture, const std::string& preset);
