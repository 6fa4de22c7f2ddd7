#include <algorithm>

#include "hosts/small_formats/small_formats.h"

constexpr size_t kHeaderBytes = 18;
constexpr int kPacked = 8;  // bit of the kind

bool isTarga(BytesView file, const std::string& extension) {
  return extension == "tga" && file.size > 0;
}

struct Targa {
  BytesView file;
  int kind;  // 1 with a palette, 2 colours, 3 greys
  bool packed;
  size_t width;
  size_t height;
  size_t pixelBytes;
  bool alpha;
  bool fromTop;
  bool fromRight;
  size_t palette;
  size_t firstColor;
  size_t colorCount;
  size_t colorBytes;
  size_t rows;
};

static bool readHeader(BytesView file, Targa* targa) {
  if (file.size < kHeaderBytes) return false;
  targa->file = file;
  targa->kind = file.data[2] & ~kPacked;
  targa->packed = (file.data[2] & kPacked) != 0;
  targa->firstColor = littleEndianAt(file, 3, 2);
  targa->colorCount = littleEndianAt(file, 5, 2);
  targa->colorBytes = (file.data[7] + 7U) / 8;
  targa->width = littleEndianAt(file, 12, 2);
  targa->height = littleEndianAt(file, 14, 2);
  targa->pixelBytes = (file.data[16] + 7U) / 8;
  const int flags = file.data[17];
  targa->fromRight = (flags & 0x10) != 0;
  targa->fromTop = (flags & 0x20) != 0;
  targa->palette = kHeaderBytes + file.data[0];
  targa->rows = targa->palette + (file.data[1] != 0 ? targa->colorCount * targa->colorBytes : 0);
  const size_t colorBytes = targa->kind == 1 ? targa->colorBytes : targa->pixelBytes;
  targa->alpha = targa->kind != 3 && colorBytes == 4 && (flags & 15) != 0;
  const bool known = targa->kind == 3   ? targa->pixelBytes == 1
                     : targa->kind == 1 ? targa->pixelBytes == 1 && file.data[1] == 1
                                        : targa->kind == 2;
  return known && (targa->kind == 3 || (colorBytes >= 2 && colorBytes <= 4)) && targa->width > 0 &&
         targa->height > 0;
}

// The rows as they stand in the file, unpacked; empty when they are not all there.
static FileBytes unpack(const Targa& targa) {
  const size_t bytes = targa.width * targa.height * targa.pixelBytes;
  FileBytes rows;
  size_t at = targa.rows;
  const BytesView file = targa.file;
  if (!targa.packed) return file.part(at, bytes).size == bytes ? file.part(at, bytes).copy() : rows;
  while (rows.size() < bytes && at < file.size) {
    const size_t count = (file.data[at] & 127U) + 1;
    const bool repeated = (file.data[at++] & 128U) != 0;
    const BytesView part = file.part(at, repeated ? targa.pixelBytes : count * targa.pixelBytes);
    if (part.size < targa.pixelBytes || (!repeated && part.size < count * targa.pixelBytes)) break;
    for (size_t i = 0; i < (repeated ? count : 1); ++i) {
      rows.insert(rows.end(), part.data, part.data + part.size);
    }
    at += part.size;
  }
  if (rows.size() < bytes) return {};
  rows.resize(bytes);
  return rows;
}

static uint8_t widened(uint32_t fiveBits) {
  return static_cast<uint8_t>((fiveBits & 31) << 3 | (fiveBits & 31) >> 2);
}

static void putColor(const uint8_t* color, size_t bytes, bool alpha, Picture* picture) {
  std::vector<uint8_t>& samples = picture->colors.samples;
  if (bytes == 2) {
    const uint32_t pixel = color[0] | uint32_t{color[1]} << 8;
    samples.insert(samples.end(), {widened(pixel >> 10), widened(pixel >> 5), widened(pixel)});
    return;
  }
  samples.insert(samples.end(), {color[2], color[1], color[0]});
  if (alpha) picture->alpha.push_back(color[3]);
}

std::string readTarga(BytesView file, RefuseSides refuse, Picture* picture) {
  Targa targa = {};
  if (!readHeader(file, &targa)) return "is not a picture that can be read here";
  const std::string reason =
      refuse(static_cast<int64_t>(targa.width), static_cast<int64_t>(targa.height));
  if (!reason.empty()) return reason;
  const FileBytes rows = unpack(targa);
  if (rows.empty()) return kCutOff;
  picture->colors = {static_cast<int32_t>(targa.width),
                     static_cast<int32_t>(targa.height),
                     targa.kind == 3 ? 1 : 3,
                     {}};
  for (size_t y = 0; y < targa.height; ++y) {
    const size_t row = targa.fromTop ? y : targa.height - 1 - y;
    for (size_t x = 0; x < targa.width; ++x) {
      const size_t column = targa.fromRight ? targa.width - 1 - x : x;
      const uint8_t* pixel = &rows[(row * targa.width + column) * targa.pixelBytes];
      if (targa.kind == 3) {
        picture->colors.samples.push_back(*pixel);
      } else if (targa.kind == 2) {
        putColor(pixel, targa.pixelBytes, targa.alpha, picture);
      } else {
        const size_t index = *pixel - std::min<size_t>(*pixel, targa.firstColor);
        const BytesView color =
            file.part(targa.palette + index * targa.colorBytes, targa.colorBytes);
        if (index >= targa.colorCount || color.size < targa.colorBytes) return kCutOff;
        putColor(color.data, targa.colorBytes, targa.alpha, picture);
      }
    }
  }
  return "";
}
