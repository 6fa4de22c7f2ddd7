#include "hosts/picture_files/exif_block.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

using namespace std::string_view_literals;

constexpr uint32_t kOrientationTag = 0x0112;
constexpr uint32_t kSmallPictureTag = 0x0201;  // where the small picture begins
constexpr uint32_t kSmallPictureBytesTag = 0x0202;
constexpr uint32_t kXResolutionTag = 0x011A;
constexpr uint32_t kYResolutionTag = 0x011B;
constexpr uint32_t kResolutionUnitTag = 0x0128;
constexpr uint32_t kNoUnit = 1;          // the numbers are a pixel's shape
constexpr uint32_t kCameraTag = 0x8769;  // where the directory of what the camera noted begins
constexpr uint32_t kPixelsAcrossTag = 0xA002;
constexpr uint32_t kPixelsDownTag = 0xA003;
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

// 0 where it is not said.
static uint32_t resolutionUnit(const Exif& exif) {
  const size_t entry = findEntry(exif, numberAt(exif, 4, 4), kResolutionUnitTag);
  return entry == 0 ? 0 : numberAt(exif, entry + 8, 2);
}

bool exifLacksUnit(BytesView bytes) {
  Exif exif;
  return openExif(bytes, &exif) && resolutionUnit(exif) == kNoUnit;
}

bool exifResolution(BytesView bytes, double* x, double* y) {
  constexpr uint32_t kPerCentimetre = 3;
  Exif exif;
  if (!openExif(bytes, &exif)) return false;
  const size_t directory = numberAt(exif, 4, 4);
  const uint32_t unit = resolutionUnit(exif);
  if (unit == kNoUnit) return false;
  const bool metric = unit == kPerCentimetre;
  const auto read = [&](uint32_t tag) {
    const size_t entry = findEntry(exif, directory, tag);
    if (entry == 0) return 0.0;
    const size_t at = numberAt(exif, entry + 8, 4);
    const uint32_t divisor = numberAt(exif, at + 4, 4);
    return divisor == 0 ? 0.0 : numberAt(exif, at, 4) / double{1} / divisor;
  };
  *x = read(kXResolutionTag) * (metric ? 100 : 1 / 0.0254);
  *y = read(kYResolutionTag) * (metric ? 100 : 1 / 0.0254);
  return *x > 0 && *y > 0;
}

// All of two entries but their tags.
static void swapEntries(const Exif& exif, size_t directory, uint32_t tag, uint32_t other,
                        FileBytes* bytes) {
  const size_t a = findEntry(exif, directory, tag);
  const size_t b = findEntry(exif, directory, other);
  if (a == 0 || b == 0) return;
  const auto start = bytes->begin();
  std::swap_ranges(start + static_cast<ptrdiff_t>(a + 2),
                   start + static_cast<ptrdiff_t>(a + kEntryBytes),
                   start + static_cast<ptrdiff_t>(b + 2));
}

FileBytes uprightExif(BytesView block, bool sidesSwapped) {
  FileBytes bytes = block.copy();
  Exif exif;
  if (!openExif(block, &exif)) return bytes;
  const size_t directory = numberAt(exif, 4, 4);
  const size_t entry = findEntry(exif, directory, kOrientationTag);
  if (entry != 0) {
    bytes[entry + 8] = exif.bigEndian ? 0 : 1;
    bytes[entry + 9] = exif.bigEndian ? 1 : 0;
  }
  if (sidesSwapped) {
    swapEntries(exif, directory, kXResolutionTag, kYResolutionTag, &bytes);
    const size_t camera = findEntry(exif, directory, kCameraTag);
    if (camera != 0) {
      swapEntries(exif, numberAt(exif, camera + 8, 4), kPixelsAcrossTag, kPixelsDownTag, &bytes);
    }
  }
  dropSmallPicture(exif, directory, &bytes);
  return bytes;
}

FileBytes uprightXmp(BytesView xmp) {
  FileBytes bytes = xmp.copy();
  // As an attribute or as an element, with the number right behind.
  for (const std::string_view before :
       {"tiff:Orientation=\""sv, "tiff:Orientation='"sv, "tiff:Orientation>"sv}) {
    auto at = bytes.begin();
    for (;;) {
      at = std::search(at, bytes.end(), before.begin(), before.end());
      if (bytes.end() - at <= static_cast<ptrdiff_t>(before.size())) break;
      at += static_cast<ptrdiff_t>(before.size());
      if (*at >= '2' && *at <= '8') *at = '1';
    }
  }
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
