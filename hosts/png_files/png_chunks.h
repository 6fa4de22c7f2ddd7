// png_chunks: the parts that PNG files consist of.

#pragma once

#include <string>

#include "hosts/process/file_bytes.h"

constexpr char kPngSignature[] = "\x89PNG\r\n\x1a\n";
constexpr size_t kPngSignatureBytes = 8;

struct PngChunk {
  std::string name;  // empty: there are no more
  BytesView data;
  uint32_t checksum;
};

// The chunk at `*at`, which moves behind it. Nothing when the rest is none.
PngChunk nextPngChunk(BytesView file, size_t* at);

// Of a chunk's name and data.
uint32_t pngChecksum(const std::string& name, BytesView data);
bool isWholePngChunk(const PngChunk& chunk);

// A compressed part taken apart, if it has no more than `most` bytes then; empty when damaged.
FileBytes unpackPngText(BytesView packed, size_t most);
