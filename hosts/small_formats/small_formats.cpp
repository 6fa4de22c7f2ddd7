#include "hosts/small_formats/small_formats.h"

constexpr SmallFormat kSmallFormats[] = {
    {isTarga, readTarga},  // first: told by the name alone, and some begin like icons
    {isBitmap, readBitmap},
    {isIcon, readIcon},
    {isPortableMap, readPortableMap},
};

const SmallFormat* findSmallFormat(BytesView file, const std::string& extension) {
  for (const SmallFormat& format : kSmallFormats) {
    if (format.is(file, extension)) return &format;
  }
  return nullptr;
}
