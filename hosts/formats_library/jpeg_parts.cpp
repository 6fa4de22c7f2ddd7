// The parts before the pixels of a JPEG file, written and read to the byte: the picture library
// would take EXIF data apart and put it together from what it knows, and leaves comments out.

#include <algorithm>
#include <cmath>
#include <string_view>

#include "hosts/formats_library/formats.h"
#include "hosts/picture_files/exif_block.h"

using namespace std::string_view_literals;

constexpr uint8_t kComment = 0xFE;
constexpr uint8_t kApplication0 = 0xE0;
constexpr uint8_t kApplication1 = 0xE1;
constexpr uint8_t kApplication2 = 0xE2;
constexpr uint8_t kApplication13 = 0xED;
constexpr uint8_t kScan = 0xDA;
constexpr size_t kLongestPart = 65533;

constexpr auto kExifName = "Exif\0\0"sv;
constexpr auto kXmpName = "http://ns.adobe.com/xap/1.0/\0"sv;
constexpr auto kProfileName = "ICC_PROFILE\0"sv;
constexpr auto kPhotoshopName = "Photoshop 3.0\0"sv;

std::vector<std::string> jpegComments(BytesView file) {
  std::vector<std::string> comments;
  if (!beginsWith(file, "\xFF\xD8")) return comments;
  size_t at = 2;
  while (at + 4 <= file.size && file.data[at] == 0xFF && file.data[at + 1] != kScan) {
    if (file.data[at + 1] == 0xFF) {
      ++at;  // filling
      continue;
    }
    const size_t length = bigEndianAt(file, at + 2, 2);
    if (length < 2) break;
    const BytesView data = file.part(at + 4, length - 2);
    if (file.data[at + 1] == kComment) {
      comments.emplace_back(reinterpret_cast<const char*>(data.data), data.size);
    }
    at += 2 + length;
  }
  return comments;
}

static void appendPart(uint8_t kind, std::string_view name, BytesView data, FileBytes* file) {
  const size_t length = 2 + name.size() + data.size;
  file->insert(file->end(), {0xFF, kind, uint8_t(length >> 8), uint8_t(length & 255)});
  file->insert(file->end(), name.begin(), name.end());
  file->insert(file->end(), data.data, data.data + data.size);
}

// One that is too long for a part is left out.
static void appendBlock(uint8_t kind, std::string_view name, const FileBytes& data,
                        FileBytes* file) {
  if (!data.empty() && name.size() + data.size() <= kLongestPart) {
    appendPart(kind, name, data, file);
  }
}

// In as many parts as it takes, which say their number and how many there are.
static void appendProfile(const FileBytes& profile, FileBytes* file) {
  constexpr size_t kPiece = kLongestPart - kProfileName.size() - 2;
  const size_t count = (profile.size() + kPiece - 1) / kPiece;
  if (count > 255) return;
  for (size_t i = 0; i < count; ++i) {
    std::string name(kProfileName);
    name.push_back(static_cast<char>(i + 1));
    name.push_back(static_cast<char>(count));
    appendPart(kApplication2, name, BytesView(profile).part(i * kPiece, kPiece), file);
  }
}

// The part that every file begins with: dots to the inch, or that nothing is known of them.
static void appendStart(const PictureMetadata& metadata, FileBytes* file) {
  constexpr double kInch = 0.0254;  // metres
  const bool known = metadata.dotsPerMeterX > 0 && metadata.dotsPerMeterY > 0;
  FileBytes data = {1, 1, static_cast<uint8_t>(known ? 1 : 0)};  // version 1.1
  for (const double perMeter : {metadata.dotsPerMeterX, metadata.dotsPerMeterY}) {
    const double dots = known ? std::clamp(std::round(perMeter * kInch), 1.0, 65535.0) : 1;
    data.push_back(static_cast<uint8_t>(static_cast<uint32_t>(dots) >> 8));
    data.push_back(static_cast<uint8_t>(static_cast<uint32_t>(dots) & 255));
  }
  data.resize(data.size() + 2);  // no small picture
  appendPart(kApplication0, "JFIF\0"sv, data, file);
}

FileBytes jpegWithMetadata(const FileBytes& file, const PictureMetadata& metadata) {
  size_t start = 2;
  if (file.size() > 4 && file[3] == kApplication0) start += 2 + bigEndianAt(file, 4, 2);
  const auto pixels = file.begin() + static_cast<ptrdiff_t>(std::min(start, file.size()));
  FileBytes whole = {0xFF, 0xD8};
  appendStart(metadata, &whole);
  appendBlock(kApplication1, kExifName, metadata.exif, &whole);
  appendBlock(kApplication1, kXmpName, metadata.xmp, &whole);
  if (!metadata.iptc.empty()) {
    appendBlock(kApplication13, kPhotoshopName, photoshopBlock(metadata.iptc), &whole);
  }
  appendProfile(metadata.profile, &whole);
  for (const std::string& comment : metadata.comments) {
    const BytesView bytes = {reinterpret_cast<const uint8_t*>(comment.data()), comment.size()};
    appendPart(kComment, "", bytes.part(0, kLongestPart), &whole);
  }
  whole.insert(whole.end(), pixels, file.end());
  return whole;
}
