#include "resources/artwork/drawing/png_writing.h"

#include <zlib.h>

#include <fstream>
#include <stdexcept>
#include <string>

using Bytes = std::vector<uint8_t>;

constexpr int kClosest = 9;
constexpr uint8_t kDifferenceToAbove = 2;  // a row's filter
constexpr size_t kPlanes = 4;
constexpr uint8_t kDepth = 8;
constexpr uint8_t kColorsAndAlpha = 6;

static void append(Bytes* bytes, uint32_t value) {  // the highest byte first
  for (int32_t shift = 24; shift >= 0; shift -= 8) {
    bytes->push_back(static_cast<uint8_t>(value >> shift));
  }
}

static void appendChunk(Bytes* file, const std::string& name, const Bytes& data) {
  append(file, static_cast<uint32_t>(data.size()));
  const size_t start = file->size();
  file->insert(file->end(), name.begin(), name.end());
  file->insert(file->end(), data.begin(), data.end());
  const auto length = static_cast<uInt>(file->size() - start);
  append(file, static_cast<uint32_t>(crc32(0, file->data() + start, length)));
}

static Bytes packed(const Bytes& data) {
  uLongf size = compressBound(static_cast<uLong>(data.size()));
  Bytes stream(size);
  if (compress2(stream.data(), &size, data.data(), static_cast<uLong>(data.size()), kClosest) !=
      Z_OK) {
    throw std::runtime_error("a picture cannot be packed");
  }
  stream.resize(size);
  return stream;
}

// Every sample as its difference to the one above, which packs shaded surfaces best.
static Bytes rowsOf(const Picture& picture) {
  const size_t length = static_cast<size_t>(picture.width) * kPlanes;
  Bytes above(length);
  Bytes rows;
  for (int32_t y = 0; y < picture.height; ++y) {
    Bytes row;
    for (int32_t x = 0; x < picture.width; ++x) {
      const size_t pixel = static_cast<size_t>(y) * picture.width + x;
      for (int32_t i = 0; i < 3; ++i) row.push_back(picture.rgb[3 * pixel + i]);
      row.push_back(picture.alpha.empty() ? 255 : picture.alpha[pixel]);
    }
    rows.push_back(kDifferenceToAbove);
    for (size_t i = 0; i < length; ++i) rows.push_back(static_cast<uint8_t>(row[i] - above[i]));
    above = row;
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
  appendChunk(&bytes, "IDAT", packed(rowsOf(picture)));
  appendChunk(&bytes, "IEND", {});
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error(path.string() + ": the file cannot be written");
}
