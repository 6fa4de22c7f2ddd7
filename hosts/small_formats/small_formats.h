// small_formats: the picture files that are little more than their rows: Windows bitmaps, icons and
// cursors, Targa, and the portable maps (PBM, PGM, PPM).

#pragma once

#include <cstdint>
#include <string>

#include "hosts/picture_files/formats_library.h"
#include "hosts/picture_files/picture.h"
#include "hosts/process/file_access.h"

constexpr char kCutOff[] = "is damaged or cut off";

struct SmallFormat {
  // `extension` decides where a file has no mark.
  bool (*is)(BytesView file, const std::string& extension);
  std::string (*read)(BytesView file, RefuseSides refuse, Picture* picture);  // the reason, or ""
};

// Null when the file is of none of them.
const SmallFormat* findSmallFormat(BytesView file, const std::string& extension);

bool isBitmap(BytesView file, const std::string& extension);
std::string readBitmap(BytesView file, RefuseSides refuse, Picture* picture);

// The largest picture of an icon.
bool isIcon(BytesView file, const std::string& extension);
std::string readIcon(BytesView file, RefuseSides refuse, Picture* picture);

bool isTarga(BytesView file, const std::string& extension);
std::string readTarga(BytesView file, RefuseSides refuse, Picture* picture);

bool isPortableMap(BytesView file, const std::string& extension);
std::string readPortableMap(BytesView file, RefuseSides refuse, Picture* picture);

void writeBitmap(const Picture& picture, OutputFile* output);

// PPM of colours, PGM of greys.
void writePortableMap(const Picture& picture, OutputFile* output);
