#include "platform/bitmap_file_check.h"

#include <cstdio>
#include <cstdlib>

#include "platform/bitmap_decoder.h"
#include "platform/user_files.h"

constexpr int64_t kFileHeaderBytes = 14;
constexpr int64_t kShortInfoBytes = 12;  // the oldest info header, with 16-bit sides
constexpr int64_t kInfoBytes = 40;
constexpr int64_t kHeaderBytes = kFileHeaderBytes + kInfoBytes;

// Little-endian, without a sign.
static int64_t numberAt(const uint8_t* file, int64_t offset, int64_t bytes) {
  int64_t number = 0;
  for (int64_t i = 0; i < bytes; ++i) number |= int64_t{file[offset + i]} << (8 * i);
  return number;
}

static int64_t sideAt(const uint8_t* file, int64_t offset) {
  // A negative height says that the rows begin at the top.
  return std::abs(int64_t{static_cast<int32_t>(numberAt(file, offset, 4))});
}

bool runsMayHold(int64_t pixels, int64_t bytes) {
  constexpr int64_t kHarmlessPixels = 4096 * 4096;
  constexpr int64_t kLongestRun = 255;  // of two bytes
  return pixels <= kHarmlessPixels || pixels / kLongestRun <= bytes;
}

// `header` has the first `held` bytes of a file of `bytes` bytes.
static bool headerIsSound(const uint8_t* header, int64_t held, int64_t bytes) {
  if (held < kFileHeaderBytes + kShortInfoBytes || header[0] != 'B' || header[1] != 'M') {
    return false;
  }
  const int64_t rows = numberAt(header, 10, 4);
  int64_t width;
  int64_t height;
  int64_t bits;
  int64_t compression = 0;
  if (numberAt(header, 14, 4) == kShortInfoBytes) {
    width = numberAt(header, 18, 2);
    height = numberAt(header, 20, 2);
    bits = numberAt(header, 24, 2);
  } else {
    if (held < kHeaderBytes) return false;
    width = sideAt(header, 18);
    height = sideAt(header, 22);
    bits = numberAt(header, 28, 2);
    compression = numberAt(header, 30, 4);
  }
  if (width < 1 || width > kLargestBitmapSide || height < 1 || height > kLargestBitmapSide) {
    return false;
  }
  const bool plainRows = compression == 0 || compression == 3;  // 3: plain rows with colour masks
  if (!plainRows) return runsMayHold(width * height, bytes - rows);
  const int64_t rowBytes = (width * bits + 31) / 32 * 4;
  return rowBytes <= (bytes - rows) / height;
}

bool bitmapFileIsSound(const char* path) {
  std::FILE* file = openUserFile(path);
  if (file == nullptr) return false;
  uint8_t header[kHeaderBytes];
  const auto held = static_cast<int64_t>(std::fread(header, 1, sizeof(header), file));
  const bool measured = std::fseek(file, 0, SEEK_END) == 0;
  const long bytes = measured ? std::ftell(file) : -1;
  std::fclose(file);
  return bytes >= 0 && headerIsSound(header, held, bytes);
}
