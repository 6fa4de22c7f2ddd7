// picture_save: planes to a picture file. A format holds what it can: resolution, profile and text
// are lost where it has no place for them; WebP keeps no colours under alpha 0.

#pragma once

#include <QImage>
#include <string>

#include "hosts/command_line/picture.h"

struct PictureFormat {
  const char* extension;
  const char* library;  // the picture library's name for it
  int quality;          // -1: it has none
  bool holdsAlpha;
  bool holdsColors;
};

// The format that a file's extension stands for, PNG for standard output; null when it cannot be
// written.
const PictureFormat* findPictureFormat(const std::string& file);
std::string writableExtensions();

// The same; ends the command when there is none.
const PictureFormat& pictureFormatOf(const std::string& file);

bool formatHolds(const PictureFormat& format, const Picture& picture);

// Ends the command, naming the file and the reason, when the format cannot hold the picture.
void checkFormatHolds(const PictureFormat& format, const Picture& picture, const std::string& file);

// The pixels alone, without what else is known about the picture.
QImage imageOf(const Picture& picture, bool withAlpha);

// The file as a whole, in its place, or not at all.
void savePicture(const Picture& picture, const PictureFormat& format, const std::string& file);
