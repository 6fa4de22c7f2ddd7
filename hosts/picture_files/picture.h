// picture: a picture file in memory, upright, grey or RGB. Colours are never multiplied by alpha,
// and those under alpha 0 are kept.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/process/file_bytes.h"
#include "hosts/substitute_host/substitute_host.h"

// What a file says in words. PNG files say which language it is in.
struct PictureText {
  std::string key;
  std::string text;      // UTF-8
  std::string language;  // empty: not said
  std::string translatedKey;
};

// A part of a PNG file that goes into a result of that format as it stands.
struct PngPart {
  std::string name;  // four letters
  FileBytes data;
};

struct PictureMetadata {
  FileBytes profile;             // ICC
  bool profileTooLarge = false;  // there is one that is left out
  FileBytes exif;                // from its byte order mark on
  bool exifLeftOut = false;      // there is some that cannot be read
  FileBytes xmp;
  FileBytes iptc;
  double dotsPerMeterX = 0;  // 0: not said
  double dotsPerMeterY = 0;
  std::vector<PictureText> texts;
  std::vector<std::string> comments;  // of JPEG files, as they stand
  std::vector<PngPart> pngColors;     // what a PNG file says of its colours besides a profile
};

// Of 16 bits the nearest of 8.
inline uint8_t shallow(uint16_t sample) {
  return static_cast<uint8_t>((sample - (sample >> 8) + 128) >> 8);
}

// The samples of a deep picture as its file has them; empty of one with 8 bits.
struct DeepSamples {
  std::vector<uint16_t> colors;
  std::vector<uint16_t> alpha;
};

// What the pictures of one file are to each other.
enum class Sequence {
  none,       // there is one, or what they are is not known
  animation,  // frames with their times
  pages,
  unlike,  // pages that differ in size or kind
};

struct Picture {
  HostPicture colors;          // 1 or 3 planes
  std::vector<uint8_t> alpha;  // one byte a pixel; empty when the file has no alpha channel
  DeepSamples deep;
  PictureMetadata metadata;
  bool sidesSwapped = false;  // turned by a quarter, as the file says
  int32_t sampleBits = 8;     // in the file
  int32_t pictureCount = 1;   // in the file
  Sequence sequence = Sequence::none;
  std::string converted;  // the kind of colours that became RGB; empty: none
};
