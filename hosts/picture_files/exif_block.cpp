#include "hosts/picture_files/exif_block.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

using namespace std::string_view_literals;

constexpr uint32_t kOrientationTag = 0x0112;
constexpr uint32_t kSmallPictureTag = 0x0201;  // where the small picture begins
constexpr uint32_t kSmallPictureBytesTag = 0x0202;
constexpr size_t kEntryBytes = 12;
constexpr uint32_t kIptcResource = 0x0404;

FileBytes exifWithoutName(BytesView block) {
  return beginsWith(block, "Exif\0\0"sv) ? block.part(6).copy() : block.copy();
}

// --- Directories ----------------------------------------------------------------------------

struct Exif {
  BytesView bytes;
  bool bigEndian;
};

static uint32_t numberAt(const Exif& exif, size_t at, size_t count) {
  return exif.bigEndian ? bigEndianAt(exif.bytes, at, count)
                        : littleEndianAt(exif.bytes, at, count);
}

static bool openExif(BytesView bytes, Exif* exif) {
  *exif = {bytes, beginsWith(bytes, "MM")};
  return bytes.size > 8 && (exif->bigEndian || beginsWith(bytes, "II"));
}

static size_t entryCount(const Exif& exif, size_t directory) {
  const size_t count = numberAt(exif, directory, 2);
  return directory + 2 + count * kEntryBytes + 4 <= exif.bytes.size ? count : 0;
}

// The place of an entry, or 0.
static size_t findEntry(const Exif& exif, size_t directory, uint32_t tag) {
  const size_t count = entryCount(exif, directory);
  for (size_t i = 0; i < count; ++i) {
    const size_t at = directory + 2 + i * kEntryBytes;
    if (numberAt(exif, at, 2) == tag) return at;
  }
  return 0;
}

int exifOrientation(BytesView bytes) {
  Exif exif;
  if (!openExif(bytes, &exif)) return 1;
  const size_t entry = findEntry(exif, numberAt(exif, 4, 4), kOrientationTag);
  const uint32_t orientation = entry == 0 ? 1 : numberAt(exif, entry + 8, 2);
  return orientation >= 1 && orientation <= 8 ? static_cast<int>(orientation) : 1;
}

// The small picture stands behind everything else as a rule, and the block ends before it then.
static void dropSmallPicture(const Exif& exif, size_t directory, FileBytes* bytes) {
  const size_t count = entryCount(exif, directory);
  const size_t next = directory + 2 + count * kEntryBytes;
  if (count == 0) return;
  const size_t small = numberAt(exif, next, 4);
  std::fill_n(bytes->begin() + static_cast<ptrdiff_t>(next), 4, uint8_t{0});
  if (small == 0 || small >= bytes->size()) return;
  const size_t begins = findEntry(exif, small, kSmallPictureTag);
  const size_t holds = findEntry(exif, small, kSmallPictureBytesTag);
  if (begins == 0 || holds == 0) return;
  const size_t start = numberAt(exif, begins + 8, 4);
  const size_t length = numberAt(exif, holds + 8, 4);
  if (start < 8 || start > bytes->size() || length > bytes->size() - start) return;
  std::fill_n(bytes->begin() + static_cast<ptrdiff_t>(start), length, uint8_t{0});
  if (start + length == bytes->size()) bytes->resize(start);
}

FileBytes uprightExif(BytesView block) {
  FileBytes bytes = block.copy();
  Exif exif;
  if (!openExif(block, &exif)) return bytes;
  const size_t directory = numberAt(exif, 4, 4);
  const size_t entry = findEntry(exif, directory, kOrientationTag);
  if (entry != 0) {
    bytes[entry + 8] = exif.bigEndian ? 0 : 1;
    bytes[entry + 9] = exif.bigEndian ? 1 : 0;
  }
  dropSmallPicture(exif, directory, &bytes);
  return bytes;
}

// --- Captions and keywords ------------------------------------------------------------------

FileBytes iptcRecords(BytesView block) {
  constexpr uint8_t kRecordMark = 0x1C;
  if (block.size > 0 && block.data[0] == kRecordMark) return block.copy();
  constexpr auto kName = "Photoshop 3.0\0"sv;
  size_t at = beginsWith(block, kName) ? kName.size() : 0;
  while (at + 12 <= block.size && beginsWith(block.part(at), "8BIM")) {
    const uint32_t kind = bigEndianAt(block, at + 4, 2);
    const size_t name = (block.data[at + 6] + 2U) & ~1U;
    const size_t length = bigEndianAt(block, at + 6 + name, 4);
    const size_t start = at + 10 + name;
    if (start > block.size || length > block.size - start) return {};
    if (kind == kIptcResource) return block.part(start, length).copy();
    at = start + ((length + 1) & ~size_t{1});
  }
  return {};
}

FileBytes photoshopBlock(BytesView iptc) {
  FileBytes block = {'8', 'B', 'I', 'M', kIptcResource >> 8, kIptcResource & 255, 0, 0};
  for (int shift = 24; shift >= 0; shift -= 8) {
    block.push_back(static_cast<uint8_t>(iptc.size >> shift));
  }
  block.insert(block.end(), iptc.data, iptc.data + iptc.size);
  if (iptc.size % 2 != 0) block.push_back(0);
  return block;
}
