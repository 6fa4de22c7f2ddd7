#include "platform/desktop/bitmap_file_check.h"

#include <cstdint>
#include <cstdlib>

constexpr qsizetype kFileHeaderBytes = 14;
constexpr qsizetype kShortInfoBytes = 12;  // the oldest info header, with 16-bit sides
constexpr qsizetype kInfoBytes = 40;

// Little-endian, without a sign.
static int64_t numberAt(const QByteArray& file, qsizetype offset, qsizetype bytes) {
  int64_t number = 0;
  int shift = 0;
  for (const char byte : file.mid(offset, bytes)) {
    number |= int64_t{static_cast<uint8_t>(byte)} << shift;
    shift += 8;
  }
  return number;
}

static int64_t sideAt(const QByteArray& file, qsizetype offset) {
  // A negative height says that the rows begin at the top.
  return std::abs(int64_t{static_cast<int32_t>(numberAt(file, offset, 4))});
}

bool isBitmapFile(const QByteArray& file) {
  return file.startsWith("BM");
}

bool bitmapFileIsWhole(const QByteArray& file) {
  if (file.size() < kFileHeaderBytes + kShortInfoBytes) return false;
  const int64_t rows = numberAt(file, 10, 4);
  int64_t width;
  int64_t height;
  int64_t bits;
  int64_t compression = 0;
  if (numberAt(file, 14, 4) == kShortInfoBytes) {
    width = numberAt(file, 18, 2);
    height = numberAt(file, 20, 2);
    bits = numberAt(file, 24, 2);
  } else {
    if (file.size() < kFileHeaderBytes + kInfoBytes) return false;
    width = sideAt(file, 18);
    height = sideAt(file, 22);
    bits = numberAt(file, 28, 2);
    compression = numberAt(file, 30, 4);
  }
  const bool plainRows = compression == 0 || compression == 3;  // 3: plain rows with colour masks
  if (!plainRows) return true;
  const int64_t rowBytes = (width * bits + 31) / 32 * 4;
  return height == 0 || rowBytes <= (file.size() - rows) / height;
}
