#include "platform/resources/picture_files.h"

#include <cstdlib>
#include <stdexcept>

using Bytes = std::vector<uint8_t>;

constexpr size_t kFileHeaderBytes = 14;
constexpr size_t kInfoBytes = 40;
constexpr size_t kDirectoryBytes = 6;
constexpr size_t kEntryBytes = 16;
constexpr int32_t kWantedSide = 32;
constexpr int32_t kLargestSide = 4096;

static void require(bool holds, const char* otherwise) {
  if (!holds) throw std::runtime_error(otherwise);
}

// --- Numbers and rows -----------------------------------------------------------------------

static uint8_t byteAt(const Bytes& file, size_t offset) {
  require(offset < file.size(), "the file is cut off");
  return file[offset];
}

static uint32_t numberAt(const Bytes& file, size_t offset, int bytes) {
  uint32_t number = 0;
  for (int i = bytes - 1; i >= 0; --i) number = number << 8 | byteAt(file, offset + i);
  return number;
}

// The header in front of the rows of a bitmap, and of every picture in an icon.
struct PixelHeader {
  int32_t width;
  int32_t height;
  bool rowsFromTop;
  int32_t bits;
  size_t palette;  // offset of its colours
  uint32_t paletteColors;
};

static PixelHeader readHeader(const Bytes& file, size_t at) {
  const size_t headerBytes = numberAt(file, at, 4);
  require(headerBytes >= kInfoBytes, "the info header is too old");
  const auto height = static_cast<int32_t>(numberAt(file, at + 8, 4));
  PixelHeader header = {};
  header.width = static_cast<int32_t>(numberAt(file, at + 4, 4));
  require(header.width > 0 && header.width <= kLargestSide, "the width is out of range");
  require(height != 0 && height >= -kLargestSide && height <= 2 * kLargestSide,
          "the height is out of range");
  header.height = std::abs(height);
  header.rowsFromTop = height < 0;
  header.bits = static_cast<int32_t>(numberAt(file, at + 14, 2));
  require(numberAt(file, at + 16, 4) == 0, "the rows are compressed");
  header.palette = at + headerBytes;
  if (header.bits == 8) {
    header.paletteColors = numberAt(file, at + 32, 4);
    if (header.paletteColors == 0) header.paletteColors = 256;
    require(header.paletteColors <= 256, "the palette is too long");
  }
  return header;
}

static size_t rowBytes(int32_t width, int32_t bits) {
  return (static_cast<size_t>(width) * bits + 31) / 32 * 4;
}

static size_t rowOffset(const PixelHeader& header, size_t rows, int32_t bits, int32_t y) {
  const int32_t stored = header.rowsFromTop ? y : header.height - 1 - y;
  return rows + rowBytes(header.width, bits) * stored;
}

// Colours stand blue first, in the rows and in the palette.
static void appendColor(const Bytes& file, size_t at, Bytes* rgb) {
  for (int channel = 2; channel >= 0; --channel) rgb->push_back(byteAt(file, at + channel));
}

static Bytes readColors(const Bytes& file, const PixelHeader& header, size_t rows) {
  Bytes rgb;
  for (int32_t y = 0; y < header.height; ++y) {
    const size_t row = rowOffset(header, rows, header.bits, y);
    for (int32_t x = 0; x < header.width; ++x) {
      if (header.bits != 8) {
        appendColor(file, row + static_cast<size_t>(x) * (header.bits / 8), &rgb);
        continue;
      }
      const uint8_t index = byteAt(file, row + x);
      require(index < header.paletteColors, "a pixel is not in the palette");
      appendColor(file, header.palette + size_t{4} * index, &rgb);
    }
  }
  return rgb;
}

FilePicture readBitmapFile(const Bytes& file) {
  require(byteAt(file, 0) == 'B' && byteAt(file, 1) == 'M', "the file is not a bitmap");
  const PixelHeader header = readHeader(file, kFileHeaderBytes);
  require(header.bits == 24 || header.bits == 8, "a bitmap has 24 or 8 bits a pixel");
  return {header.width, header.height, readColors(file, header, numberAt(file, 10, 4)), {}, 0, 0};
}

// --- Icons and cursors ----------------------------------------------------------------------

// The fourth byte of every pixel.
static Bytes readAlpha(const Bytes& file, const PixelHeader& header, size_t rows) {
  Bytes alpha;
  for (int32_t y = 0; y < header.height; ++y) {
    const size_t row = rowOffset(header, rows, header.bits, y);
    for (int32_t x = 0; x < header.width; ++x) {
      alpha.push_back(byteAt(file, row + size_t{4} * x + 3));
    }
  }
  return alpha;
}

// One bit a pixel, set where the picture is transparent.
static Bytes readMask(const Bytes& file, const PixelHeader& header, size_t rows) {
  Bytes coverage;
  for (int32_t y = 0; y < header.height; ++y) {
    const size_t row = rowOffset(header, rows, 1, y);
    for (int32_t x = 0; x < header.width; ++x) {
      const int bit = byteAt(file, row + x / 8) >> (7 - x % 8) & 1;
      coverage.push_back(bit == 1 ? 0 : 255);
    }
  }
  return coverage;
}

static bool holdsAny(const Bytes& alpha) {
  for (const uint8_t value : alpha) {
    if (value != 0) return true;
  }
  return false;
}

// Offset of the directory's row for the picture to take.
static size_t chooseEntry(const Bytes& file) {
  const size_t count = numberAt(file, 4, 2);
  require(count > 0, "the file holds no picture");
  for (size_t i = 0; i < count; ++i) {
    const size_t entry = kDirectoryBytes + i * kEntryBytes;
    if (byteAt(file, entry) == kWantedSide && byteAt(file, entry + 1) == kWantedSide) return entry;
  }
  return kDirectoryBytes;
}

static FilePicture readEntry(const Bytes& file, size_t entry) {
  const size_t at = numberAt(file, entry + 12, 4);
  PixelHeader header = readHeader(file, at);
  require(header.bits == 32 || header.bits == 24, "an icon has 32 or 24 bits a pixel");
  header.height /= 2;  // the header counts the mask's rows too
  require(header.height > 0, "the height is out of range");
  const size_t rows = header.palette;
  const size_t mask = rows + rowBytes(header.width, header.bits) * header.height;
  FilePicture picture = {header.width, header.height, readColors(file, header, rows), {}, 0, 0};
  if (header.bits == 32) picture.coverage = readAlpha(file, header, rows);
  // Without any alpha the mask alone tells what is transparent.
  if (!holdsAny(picture.coverage)) picture.coverage = readMask(file, header, mask);
  return picture;
}

FilePicture readIconFile(const Bytes& file) {
  require(numberAt(file, 0, 4) == 0x10000, "the file is not an icon");
  FilePicture picture = readEntry(file, chooseEntry(file));
  for (uint8_t& coverage : picture.coverage) coverage = coverage >= 128 ? 255 : 0;
  return picture;
}

FilePicture readCursorFile(const Bytes& file) {
  require(numberAt(file, 0, 4) == 0x20000, "the file is not a cursor");
  const size_t entry = chooseEntry(file);
  FilePicture picture = readEntry(file, entry);
  picture.hotX = static_cast<int32_t>(numberAt(file, entry + 4, 2));
  picture.hotY = static_cast<int32_t>(numberAt(file, entry + 6, 2));
  return picture;
}
