// picture_format: the kinds of picture files that can be written, and what each can hold.

#pragma once

#include <string>

#include "hosts/picture_files/picture.h"

enum class FormatKind { png, jpeg, tiff, webp, gif, bmp, pnm, avif, heic, jxl };

struct PictureFormat {
  const char* extension;
  FormatKind kind;
  bool alpha;
  bool colors;
  bool depth;  // 16 bits
  bool profile;
  bool exif;
  bool xmp;
  bool iptc;
  bool resolution;
  bool texts;  // more than one, with their keys
  Sequence sequence;
};

// What the user asks of the file; -1 and "": the format's usual.
struct SaveChoices {
  int quality = -1;
  int compression = -1;
  bool lossless = false;
  std::string chroma;  // "444", "420"
  bool strip = false;  // nothing but pixels
  std::string format;  // an extension, instead of the file's
};

// The format that a file's extension stands for, PNG for standard output; null when it cannot be
// written.
const PictureFormat* findPictureFormat(const std::string& file);
std::string writableExtensions();

// "*.png *.jpg ...": of all that can be read.
std::string readablePatterns();

// The same; ends the command when there is none.
const PictureFormat& pictureFormatOf(const std::string& file);

// Whether it holds all pictures of the file that this one, the first, is from.
bool formatHoldsAll(const PictureFormat& format, const Picture& first);

bool formatHolds(const PictureFormat& format, const Picture& picture);

// Ends the command, naming the file and the reason, when the format cannot hold the picture.
void checkFormatHolds(const PictureFormat& format, const Picture& picture, const std::string& file);

// What of the picture's words and notes the format cannot hold, as a list; "" for nothing.
std::string lossesIn(const PictureFormat& format, const Picture& picture);

// And what it can, the same way.
std::string keptIn(const PictureFormat& format, const Picture& picture);

// A profile for colours does not fit a grey picture, nor the other way round.
bool profileFits(const PictureFormat& format, const Picture& picture);
