// formats_library: the library of its own that reads and writes what is neither a plain PNG file
// nor one of the small formats. Loaded when it is first needed: it takes longer to start than the
// whole program does for a small picture.

#pragma once

#include <functional>
#include <string>

#include "hosts/picture_files/picture.h"
#include "hosts/picture_files/picture_format.h"

// How far a name drawn in white covers each pixel.
struct DrawnText {
  int32_t width = 0;
  int32_t height = 0;
  int32_t rise = 0;  // of its first row below the line's top
  std::vector<uint8_t> coverage;
};

// Every procedure that gives a text answers with "" when it succeeded and with the reason
// otherwise; kStopped when `stop` said so.
constexpr char kStopped[] = "stopped";
constexpr char kNotAPicture[] = "is not a picture that can be read here";

// `refuse` sees the sides before anything is decoded, and gives the reason against them or "".
using RefuseSides = std::string (*)(int64_t width, int64_t height);

// What it throws comes out of who called it.
using ChangePicture = std::function<void(int32_t number, Picture* picture)>;

struct FormatsLibrary {
  // One picture of a file, counted from 1, upright, with all that is said about it; none when there
  // are not so many, as its count then tells.
  std::string (*load)(BytesView file, int32_t number, RefuseSides refuse, bool (*stop)(),
                      Picture* picture);
  std::string (*save)(const Picture& picture, const PictureFormat& format,
                      const SaveChoices& choices, bool (*stop)(), FileBytes* file);
  // All pictures of a file, changed one after another, into one of a format that holds them, with
  // their times. Only one is in memory at a time.
  std::string (*convertAll)(BytesView file, const PictureFormat& format, const SaveChoices& choices,
                            RefuseSides refuse, bool (*stop)(), const ChangePicture& change,
                            FileBytes* result);
  // Where the work on files tells how far it is.
  void (*tellProgress)(void (*tell)(int32_t done, int32_t total));
  // Made smaller or larger; 1 or 3 planes.
  std::string (*resize)(const HostPicture& from, int32_t width, int32_t height, HostPicture* to);
  std::string (*drawText)(const std::string& text, int32_t letterPixels, DrawnText* drawn);
};

// Ends the command when the library is not there.
const FormatsLibrary& formatsLibrary();
