// WebP files without a part: their writer makes EXIF up for pictures that have none.

#include "hosts/formats_library/formats.h"

constexpr size_t kFormStart = 12;    // behind "RIFF", the size and "WEBP"
constexpr size_t kChunkHead = 8;     // name and size
constexpr uint8_t kExifFlag = 0x08;  // of the first byte of a VP8X chunk

static void setLittleEndian(uint32_t number, size_t at, FileBytes* bytes) {
  for (size_t i = 0; i < 4; ++i) (*bytes)[at + i] = static_cast<uint8_t>(number >> (8 * i));
}

FileBytes webpWithoutExif(BytesView file) {
  FileBytes result = file.part(0, kFormStart).copy();
  for (size_t at = kFormStart; at + kChunkHead <= file.size;) {
    const size_t padded = (littleEndianAt(file, at + 4, 4) + size_t{1}) & ~size_t{1};
    const BytesView chunk = file.part(at, std::min(kChunkHead + padded, file.size - at));
    at += chunk.size;
    if (beginsWith(chunk, "EXIF")) continue;
    const size_t start = result.size();
    result.insert(result.end(), chunk.data, chunk.data + chunk.size);
    if (beginsWith(chunk, "VP8X") && chunk.size > kChunkHead) {
      result[start + kChunkHead] &= static_cast<uint8_t>(~kExifFlag);
    }
  }
  setLittleEndian(static_cast<uint32_t>(result.size() - kChunkHead), 4, &result);
  return result;
}
