#include "hosts/command_line/tiff_directory.h"

#include <QtEndian>
#include <iterator>
#include <vector>

constexpr uint16_t kBitsPerSample = 258;
constexpr uint16_t kColorKind = 262;
constexpr int64_t kSeparatedColors = 5;
constexpr uint16_t kStripOffsets = 273;
constexpr uint16_t kStripByteCounts = 279;
constexpr uint16_t kTileOffsets = 324;
constexpr uint16_t kTileByteCounts = 325;
constexpr uint16_t kExtraSamples = 338;
constexpr char kMultipliedAlpha = 1;
constexpr int64_t kPlainAlpha = 2;
constexpr uint16_t kShortForm = 3;  // 16-bit numbers
constexpr uint16_t kLongForm = 4;   // 32-bit numbers
constexpr uint16_t kClassicVersion = 42;
constexpr int64_t kEntryBytes = 12;

struct TiffBytes {
  const QByteArray& file;
  bool bigEndian;
  bool missing;  // something was read behind the end
};

static int64_t numberAt(TiffBytes* bytes, int64_t offset, int64_t size) {
  if (offset < 0 || offset + size > bytes->file.size()) {
    bytes->missing = true;
    return 0;
  }
  const char* at = bytes->file.cbegin() + offset;
  if (size == 2) {
    return bytes->bigEndian ? qFromBigEndian<uint16_t>(at) : qFromLittleEndian<uint16_t>(at);
  }
  return bytes->bigEndian ? qFromBigEndian<uint32_t>(at) : qFromLittleEndian<uint32_t>(at);
}

// The numbers of a directory entry: in the entry itself when they fit, else where it points.
static std::vector<int64_t> entryNumbers(TiffBytes* bytes, int64_t entry) {
  std::vector<int64_t> numbers;
  const int64_t form = numberAt(bytes, entry + 2, 2);
  const int64_t count = numberAt(bytes, entry + 4, 4);
  if (form != kShortForm && form != kLongForm) return numbers;
  const int64_t size = form == kShortForm ? 2 : 4;
  const int64_t start = count * size <= 4 ? entry + 8 : numberAt(bytes, entry + 8, 4);
  for (int64_t i = 0; i < count && !bytes->missing; ++i) {
    numbers.push_back(numberAt(bytes, start + i * size, size));
  }
  return numbers;
}

bool isTiffFile(const QByteArray& file) {
  return file.size() >= 8 && (file.startsWith("II") || file.startsWith("MM"));
}

// Bytes of one number in each form, by the form's number.
constexpr int64_t kFormBytes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};

// Whether what a directory entry points to is there; unknown forms are not looked at.
static bool entryIsWhole(TiffBytes* bytes, int64_t entry) {
  const int64_t form = numberAt(bytes, entry + 2, 2);
  if (form >= static_cast<int64_t>(std::size(kFormBytes))) return true;
  const int64_t size = numberAt(bytes, entry + 4, 4) * kFormBytes[form];
  return size <= 4 || numberAt(bytes, entry + 8, 4) + size <= bytes->file.size();
}

bool tiffIsWhole(const QByteArray& file) {
  TiffBytes bytes = {file, file.startsWith("MM"), false};
  if (numberAt(&bytes, 2, 2) != kClassicVersion) return true;
  const int64_t directory = numberAt(&bytes, 4, 4);
  const int64_t entries = numberAt(&bytes, directory, 2);
  std::vector<int64_t> offsets;
  std::vector<int64_t> sizes;
  for (int64_t i = 0; i < entries && !bytes.missing; ++i) {
    const int64_t entry = directory + 2 + i * kEntryBytes;
    if (!entryIsWhole(&bytes, entry)) return false;
    const int64_t tag = numberAt(&bytes, entry, 2);
    if (tag == kStripOffsets || tag == kTileOffsets) offsets = entryNumbers(&bytes, entry);
    if (tag == kStripByteCounts || tag == kTileByteCounts) sizes = entryNumbers(&bytes, entry);
  }
  if (bytes.missing) return false;
  for (size_t i = 0; i < offsets.size() && i < sizes.size(); ++i) {
    if (offsets[i] + sizes[i] > file.size()) return false;
  }
  return true;
}

TiffSamples tiffSamples(const QByteArray& file) {
  TiffSamples samples = {false, 1};
  TiffBytes bytes = {file, file.startsWith("MM"), false};
  if (numberAt(&bytes, 2, 2) != kClassicVersion) return samples;
  const int64_t directory = numberAt(&bytes, 4, 4);
  const int64_t entries = numberAt(&bytes, directory, 2);
  for (int64_t i = 0; i < entries && !bytes.missing; ++i) {
    const int64_t entry = directory + 2 + i * kEntryBytes;
    const int64_t tag = numberAt(&bytes, entry, 2);
    if (tag != kBitsPerSample && tag != kColorKind) continue;
    const std::vector<int64_t> numbers = entryNumbers(&bytes, entry);
    if (numbers.empty()) continue;
    if (tag == kBitsPerSample) samples.bits = numbers[0];
    if (tag == kColorKind) samples.cmyk = numbers[0] == kSeparatedColors;
  }
  return samples;
}

bool keepTiffColorsPlain(QByteArray* file) {
  TiffBytes bytes = {*file, file->startsWith("MM"), false};
  if (numberAt(&bytes, 2, 2) != kClassicVersion) return false;
  const int64_t directory = numberAt(&bytes, 4, 4);
  const int64_t entries = numberAt(&bytes, directory, 2);
  for (int64_t i = 0; i < entries && !bytes.missing; ++i) {
    const int64_t entry = directory + 2 + i * kEntryBytes;
    if (numberAt(&bytes, entry, 2) != kExtraSamples) continue;
    const std::vector<int64_t> kinds = entryNumbers(&bytes, entry);
    if (bytes.missing || kinds.size() != 1 || kinds[0] != kPlainAlpha) return false;
    const qsizetype lowByte = entry + (bytes.bigEndian ? 9 : 8);
    (*file)[lowByte] = kMultipliedAlpha;
    return true;
  }
  return false;
}
