// png_read: PNG files of the kinds that are almost all of them: grey or RGB, with or without alpha,
// of 8 or 16 bits, not interlaced. The picture library reads the others.

#pragma once

#include <cstdint>
#include <string>

#include "hosts/picture_files/picture.h"

struct PngHeader {
  uint32_t width;
  uint32_t height;
  int bits;
  int colorType;
  bool interlaced;
  bool oneTransparentColor;
};

bool isPngFile(BytesView file);

// What the file says before its pixels; false when that is damaged.
bool readPngHeader(BytesView file, PngHeader* header);
bool isPlainPng(const PngHeader& header);

// The pixels of a plain file. False, with nothing of use in the picture, when the file is not
// whole. `stop` is asked now and then, and its yes ends the work with false, too.
bool readPngPixels(BytesView file, const PngHeader& header, bool (*stop)(), Picture* picture);

// What any PNG file says besides its pixels.
void readPngMetadata(BytesView file, PictureMetadata* metadata);
