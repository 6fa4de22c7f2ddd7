#include "resources/artwork/png_writing.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <string>

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kCheckPolynomial = 0xEDB88320;
constexpr uint32_t kSumModulus = 65521;
constexpr size_t kLargestBlock = 65535;
constexpr uint8_t kStraightRow = 0;  // a row that stands as it is
constexpr uint8_t kDepth = 8;
constexpr uint8_t kColorsAndAlpha = 6;

static void append(Bytes* bytes, uint32_t value) {  // the highest byte first
  for (int32_t shift = 24; shift >= 0; shift -= 8) {
    bytes->push_back(static_cast<uint8_t>(value >> shift));
  }
}

static uint32_t checkOf(const Bytes& bytes, size_t from) {
  uint32_t check = ~uint32_t{0};
  for (size_t i = from; i < bytes.size(); ++i) {
    check ^= bytes[i];
    for (int32_t bit = 0; bit < 8; ++bit) {
      check = (check & 1) != 0 ? check >> 1 ^ kCheckPolynomial : check >> 1;
    }
  }
  return ~check;
}

static void appendChunk(Bytes* file, const std::string& name, const Bytes& data) {
  append(file, static_cast<uint32_t>(data.size()));
  const size_t start = file->size();
  file->insert(file->end(), name.begin(), name.end());
  file->insert(file->end(), data.begin(), data.end());
  append(file, checkOf(*file, start));
}

// The stream that PNG wants, in blocks that are only stored.
static Bytes storedStream(const Bytes& data) {
  Bytes stream = {0x78, 0x01};
  uint32_t low = 1;
  uint32_t high = 0;
  for (size_t at = 0; at < data.size(); at += kLargestBlock) {
    const size_t count = std::min(kLargestBlock, data.size() - at);
    const bool last = at + count == data.size();
    const auto length = static_cast<uint16_t>(count);
    const auto inverse = static_cast<uint16_t>(~length);
    stream.push_back(last ? 1 : 0);
    for (const uint16_t word : {length, inverse}) {
      stream.push_back(static_cast<uint8_t>(word));
      stream.push_back(static_cast<uint8_t>(word >> 8));
    }
    const auto start = data.begin() + static_cast<std::ptrdiff_t>(at);
    stream.insert(stream.end(), start, start + static_cast<std::ptrdiff_t>(count));
  }
  for (const uint8_t byte : data) {
    low = (low + byte) % kSumModulus;
    high = (high + low) % kSumModulus;
  }
  append(&stream, high << 16 | low);
  return stream;
}

static Bytes rowsOf(const Picture& picture) {
  Bytes rows;
  for (int32_t y = 0; y < picture.height; ++y) {
    rows.push_back(kStraightRow);
    for (int32_t x = 0; x < picture.width; ++x) {
      const size_t pixel = static_cast<size_t>(y) * picture.width + x;
      for (int32_t i = 0; i < 3; ++i) rows.push_back(picture.rgb[3 * pixel + i]);
      rows.push_back(picture.alpha.empty() ? 255 : picture.alpha[pixel]);
    }
  }
  return rows;
}

void writePng(const std::filesystem::path& path, const Picture& picture) {
  Bytes header;
  append(&header, static_cast<uint32_t>(picture.width));
  append(&header, static_cast<uint32_t>(picture.height));
  for (const uint8_t byte : {kDepth, kColorsAndAlpha, uint8_t{0}, uint8_t{0}, uint8_t{0}}) {
    header.push_back(byte);
  }
  Bytes bytes = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  appendChunk(&bytes, "IHDR", header);
  appendChunk(&bytes, "IDAT", storedStream(rowsOf(picture)));
  appendChunk(&bytes, "IEND", {});
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error(path.string() + ": the file cannot be written");
}
