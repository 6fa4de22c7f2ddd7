#include "platform/bitmap_decoder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/bitmap_file_check.h"
#include "platform/unix/bitmap_file.h"
#include "platform/unix/program_session.h"
#include "platform/user_files.h"

static bool readFile(const char* path, std::vector<uint8_t>* bytes) {
  std::FILE* file = openUserFile(path);
  if (file == nullptr) return false;
  uint8_t piece[65536];
  for (size_t count = 0; (count = std::fread(piece, 1, sizeof(piece), file)) > 0;) {
    bytes->insert(bytes->end(), piece, piece + count);
  }
  const bool whole = std::ferror(file) == 0;
  std::fclose(file);
  return whole;
}

static bool sideFits(int32_t side) {
  return side >= 1 && side <= kLargestBitmapSide;
}

static bool decode(const char* path, DecodedBitmap* bitmap) {
  std::vector<uint8_t> file;
  if (!readFile(path, &file)) return false;
  size_t info = 0;
  BitmapLayout layout;
  BitmapPixels pixels;
  if (!readBitmapFileLayout(file.data(), file.size(), &info, &layout) || !sideFits(layout.width) ||
      !sideFits(layout.height) ||
      !readBitmapPixels(file.data() + info, file.size() - info, layout, &pixels)) {
    return false;
  }
  uint8_t* rgb = static_cast<uint8_t*>(std::malloc(pixels.rgb.size()));
  if (rgb == nullptr) return false;
  std::memcpy(rgb, pixels.rgb.data(), pixels.rgb.size());
  *bitmap = {pixels.width, pixels.height, rgb};
  return true;
}

static bool (*decodeOther)(const char* path, DecodedBitmap* bitmap) = nullptr;
static const char* otherPatterns = "";

void decodeMorePictures(bool (*decode)(const char* path, DecodedBitmap* bitmap),
                        const char* patterns) {
  decodeOther = decode;
  otherPatterns = patterns;
}

const char* morePicturePatterns() {
  return otherPatterns;
}

static bool beginsAsBitmap(const char* path) {
  std::FILE* file = openUserFile(path);
  if (file == nullptr) return false;
  char mark[2] = {};
  const bool read = std::fread(mark, 1, sizeof(mark), file) == sizeof(mark);
  std::fclose(file);
  return read && mark[0] == 'B' && mark[1] == 'M';
}

bool decodeBitmapFile(const char* path, DecodedBitmap* bitmap) {
  if (decodeOther != nullptr && !beginsAsBitmap(path)) return decodeOther(path, bitmap);
  try {
    return bitmapFileIsSound(path) && decode(path, bitmap);
  } catch (...) {
    return false;  // out of memory
  }
}
