#include "hosts/png_files/png_chunks.h"

#include <isa-l/crc.h>
#include <zlib.h>

#include <algorithm>

constexpr size_t kAroundData = 12;  // length, name, checksum

static bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

PngChunk nextPngChunk(BytesView file, size_t* at) {
  if (*at + kAroundData > file.size) return {};
  const size_t bytes = bigEndianAt(file, *at, 4);
  if (bytes > file.size - *at - kAroundData) return {};
  PngChunk chunk;
  chunk.name.assign(reinterpret_cast<const char*>(file.data) + *at + 4, 4);
  if (!std::all_of(chunk.name.begin(), chunk.name.end(), isLetter)) return {};
  chunk.data = file.part(*at + 8, bytes);
  chunk.checksum = bigEndianAt(file, *at + 8 + bytes, 4);
  *at += kAroundData + bytes;
  return chunk;
}

uint32_t pngChecksum(const std::string& name, BytesView data) {
  const auto* letters = reinterpret_cast<const uint8_t*>(name.data());
  const uint32_t ofName = crc32_gzip_refl(0, letters, name.size());
  return data.size == 0 ? ofName : crc32_gzip_refl(ofName, data.data, data.size);
}

bool isWholePngChunk(const PngChunk& chunk) {
  return pngChecksum(chunk.name, chunk.data) == chunk.checksum;
}

FileBytes unpackPngText(BytesView packed, size_t most) {
  z_stream stream = {};
  if (packed.size == 0 || inflateInit(&stream) != Z_OK) return {};
  FileBytes text;
  stream.next_in = const_cast<uint8_t*>(packed.data);
  stream.avail_in = static_cast<uInt>(packed.size);
  int state = Z_OK;
  while (state == Z_OK && text.size() < most) {
    uint8_t piece[16384];
    stream.next_out = piece;
    stream.avail_out = sizeof(piece);
    state = inflate(&stream, Z_NO_FLUSH);
    text.insert(text.end(), piece, stream.next_out);
  }
  inflateEnd(&stream);
  if (state != Z_STREAM_END || text.size() > most) return {};
  return text;
}
