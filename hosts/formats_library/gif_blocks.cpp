#include "hosts/formats_library/formats.h"

constexpr size_t kHeaderBytes = 13;
constexpr size_t kImageBytes = 10;
constexpr uint8_t kExtension = 0x21;
constexpr uint8_t kImage = 0x2C;

static size_t colorTableBytes(uint8_t flags) {
  return (flags & 0x80) == 0 ? 0 : size_t{3} << ((flags & 7) + 1);
}

// Past a chain of blocks, each behind its length, the last of which is empty.
static size_t behindBlocks(BytesView file, size_t place) {
  while (place < file.size && file.data[place] != 0) place += size_t{1} + file.data[place];
  return place + 1;
}

bool gifIsCutOff(BytesView file) {
  if (!beginsWith(file, "GIF8")) return false;
  if (file.size < kHeaderBytes) return true;
  size_t place = kHeaderBytes + colorTableBytes(file.data[10]);
  while (place < file.size) {
    const uint8_t mark = file.data[place];
    if (mark == kExtension) {
      place = behindBlocks(file, place + 2);
    } else if (mark == kImage) {
      if (place + kImageBytes > file.size) return true;
      const uint8_t flags = file.data[place + kImageBytes - 1];
      place = behindBlocks(file, place + kImageBytes + colorTableBytes(flags) + 1);
    } else {
      return false;
    }
  }
  return place > file.size;
}
