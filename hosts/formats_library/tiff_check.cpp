// A look at the directories of a TIFF file before the picture library takes every array that they
// name: thousands of entries may name the same one.

#include <algorithm>
#include <string_view>

#include "hosts/formats_library/formats.h"

using namespace std::string_view_literals;

constexpr int kMostDirectories = 10000;
constexpr size_t kElementBytes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8};
constexpr size_t kSpareBytes = size_t{64} << 10;  // for what small files name twice

// Where things stand in classic and in large files.
struct TiffLayout {
  size_t countBytes;   // of the number of entries
  size_t offsetBytes;  // of counts and places
  size_t firstPlace;   // of the place of the first directory
};
constexpr TiffLayout kClassic = {2, 4, 4};
constexpr TiffLayout kLarge = {8, 8, 8};

struct Tiff {
  BytesView file;
  bool bigEndian;
  TiffLayout layout;
};

static uint64_t numberAt(const Tiff& tiff, uint64_t at, size_t bytes) {
  uint64_t number = 0;
  for (size_t i = 0; i < bytes; ++i) {
    const uint64_t place = at + (tiff.bigEndian ? i : bytes - 1 - i);
    number = number << 8 | (place < tiff.file.size ? tiff.file.data[place] : 0U);
  }
  return number;
}

// The bytes that the entries of a directory name; more than any file has when it is no directory.
static uint64_t namedBytes(const Tiff& tiff, uint64_t directory, uint64_t* next) {
  const size_t entryBytes = 4 + 2 * tiff.layout.offsetBytes;
  const uint64_t count = numberAt(tiff, directory, tiff.layout.countBytes);
  const uint64_t start = directory + tiff.layout.countBytes;
  if (directory >= tiff.file.size || count > tiff.file.size / entryBytes) return UINT64_MAX;
  uint64_t bytes = 0;
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t entry = start + i * entryBytes;
    const uint64_t type = numberAt(tiff, entry + 2, 2);
    const uint64_t elements = numberAt(tiff, entry + 4, tiff.layout.offsetBytes);
    const size_t size = type < std::size(kElementBytes) ? kElementBytes[type] : 0;
    bytes += std::min<uint64_t>(elements, tiff.file.size) * size;
  }
  *next = numberAt(tiff, start + count * entryBytes, tiff.layout.offsetBytes);
  return bytes;
}

static bool openTiff(BytesView file, Tiff* tiff) {
  const bool bigEndian = beginsWith(file, "MM");
  if (!bigEndian && !beginsWith(file, "II")) return false;
  *tiff = {file, bigEndian, kClassic};
  const uint64_t version = numberAt(*tiff, 2, 2);
  if (version == 43) tiff->layout = kLarge;
  return version == 42 || version == 43;
}

bool namesTooMuch(BytesView file) {
  Tiff tiff;
  if (!openTiff(file, &tiff)) return false;
  const uint64_t most = 2 * uint64_t{file.size} + kSpareBytes;
  uint64_t directory = numberAt(tiff, tiff.layout.firstPlace, tiff.layout.offsetBytes);
  for (int i = 0; i < kMostDirectories && directory != 0; ++i) {
    if (namedBytes(tiff, directory, &directory) > most) return true;
  }
  return false;
}

bool holdsCameraNotes(BytesView file) {
  constexpr uint64_t kCameraTag = 0x8769;
  constexpr uint64_t kPlaceTag = 0x8825;
  Tiff tiff;
  if (!openTiff(file, &tiff)) return false;
  const uint64_t directory = numberAt(tiff, tiff.layout.firstPlace, tiff.layout.offsetBytes);
  const size_t entryBytes = 4 + 2 * tiff.layout.offsetBytes;
  const uint64_t count = std::min<uint64_t>(numberAt(tiff, directory, tiff.layout.countBytes),
                                            tiff.file.size / entryBytes);
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t tag = numberAt(tiff, directory + tiff.layout.countBytes + i * entryBytes, 2);
    if (tag == kCameraTag || tag == kPlaceTag) return true;
  }
  return false;
}
