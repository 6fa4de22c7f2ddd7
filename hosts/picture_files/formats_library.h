// formats_library: the library of its own that reads and writes what is neither a plain PNG file
// nor one of the small formats. Loaded when it is first needed: it takes longer to start than the
// whole program does for a small picture.

#pragma once

#include <string>

#include "hosts/picture_files/picture.h"
#include "hosts/picture_files/picture_format.h"
#include "hosts/process/work_progress.h"

// How far a name drawn in white covers each pixel.
struct DrawnText {
  int32_t width = 0;
  int32_t height = 0;
  int32_t rise = 0;  // of its first row below the line's top
  std::vector<uint8_t> coverage;
};

// Every procedure that gives a text answers with "" when it succeeded and with the reason
// otherwise; kStopped when `watch` said so.
constexpr char kStopped[] = "stopped";
constexpr char kNotAPicture[] = "is not a picture that can be read here";

struct FormatsLibrary {
  // The first picture of a file, upright, with all that is said about it. `refuse` sees the sides
  // before anything is decoded, and gives the reason against them or "".
  std::string (*load)(BytesView file, std::string (*refuse)(int64_t width, int64_t height),
                      WorkWatch watch, Picture* picture);
  std::string (*save)(const Picture& picture, const PictureFormat& format,
                      const SaveChoices& choices, WorkWatch watch, FileBytes* file);
  // Made smaller or larger; 1 or 3 planes.
  std::string (*resize)(const HostPicture& from, int32_t width, int32_t height, HostPicture* to);
  std::string (*drawText)(const std::string& text, int32_t letterPixels, DrawnText* drawn);
};

// Ends the command when the library is not there.
const FormatsLibrary& formatsLibrary();
