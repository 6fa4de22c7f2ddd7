// tiff_directory: what stands in the way of taking a TIFF file's samples as they are.

#pragma once

#include <QByteArray>
#include <cstdint>

bool isTiffFile(const QByteArray& file);

// Whether all of the first picture, and all that is said about it, lies within the file: of a
// cut-off file the library delivers what it has. Files in the 64-bit form are not looked at: true.
bool tiffIsWhole(const QByteArray& file);

// How the first picture's samples are stored, as far as it is said.
struct TiffSamples {
  bool cmyk;
  int64_t bits;  // of the first sample of a pixel
};
TiffSamples tiffSamples(const QByteArray& file);

// Makes a file with plain colours beside its alpha claim that they are multiplied by it already.
// The library multiplies plain ones, which loses those under alpha 0 and rounds the others; what
// it takes for multiplied it delivers as it stands. True when the file was one with plain colours.
bool keepTiffColorsPlain(QByteArray* file);
