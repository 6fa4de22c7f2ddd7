// Any bytes as a picture file, for all that reads files without another library: the program's own
// formats, what cameras note in them, and the pictures of textures and environments.

#include <cstdlib>

#include "hosts/picture_files/exif_block.h"
#include "hosts/png_files/png_chunks.h"
#include "hosts/png_files/png_read.h"
#include "hosts/small_formats/small_formats.h"
#include "platform/unix/bitmap_file.h"

constexpr int64_t kMostPixels = 1 << 20;

static void require(bool holds) {
  if (!holds) std::abort();
}

static std::string refuseLarge(int64_t width, int64_t height) {
  return width < 1 || height < 1 || width > kMostPixels / height ? "is too large" : "";
}

static bool neverStop() {
  return false;
}

static void expectWhole(const Picture& picture) {
  const HostPicture& colors = picture.colors;
  require(colors.planes == 1 || colors.planes == 3);
  const auto pixels = static_cast<size_t>(colors.width) * static_cast<size_t>(colors.height);
  const size_t samples = pixels * static_cast<size_t>(colors.planes);
  require(pixels > 0 && colors.samples.size() == samples);
  require(picture.alpha.empty() || picture.alpha.size() == pixels);
  require(picture.deep.colors.empty() || picture.deep.colors.size() == samples);
}

// The same file with checksums that hold, which chance does not find.
static FileBytes withChecksums(BytesView file) {
  FileBytes whole = file.copy();
  size_t at = kPngSignatureBytes;
  for (;;) {
    const PngChunk chunk = nextPngChunk(file, &at);
    if (chunk.name.empty()) return whole;
    const uint32_t checksum = pngChecksum(chunk.name, chunk.data);
    for (size_t i = 0; i < 4; ++i) whole[at - 1 - i] = static_cast<uint8_t>(checksum >> (8 * i));
  }
}

static void readAsPng(BytesView file) {
  PngHeader header = {};
  if (!isPngFile(file) || !readPngHeader(file, &header)) return;
  Picture picture;
  readPngMetadata(file, &picture.metadata);
  if (!refuseLarge(header.width, header.height).empty() || !isPlainPng(header)) return;
  if (readPngPixels(file, header, neverStop, &picture)) expectWhole(picture);
}

static void readAsSmallFormat(BytesView file, const std::string& extension) {
  const SmallFormat* format = findSmallFormat(file, extension);
  if (format == nullptr) return;
  Picture picture;
  if (format->read(file, refuseLarge, &picture).empty()) expectWhole(picture);
}

static void readAsBitmap(BytesView file) {
  size_t info = 0;
  BitmapLayout layout = {};
  BitmapPixels pixels;
  if (!readBitmapFileLayout(file.data, file.size, &info, &layout)) return;
  if (!refuseLarge(layout.width, layout.height).empty()) return;
  if (!readBitmapPixels(file.data + info, file.size - info, layout, &pixels)) return;
  require(pixels.rgb.size() == 3 * size_t{1} * pixels.width * pixels.height);
}

static void readAsNotes(BytesView block) {
  const FileBytes exif = exifWithoutName(block);
  const int orientation = exifOrientation(exif);
  require(orientation >= 1 && orientation <= 8);
  const FileBytes upright = uprightExif(exif, (block.size & 1) != 0);
  require(upright.empty() || exifOrientation(upright) == 1);
  photoshopBlock(iptcRecords(block));
  double x = 0;
  double y = 0;
  exifResolution(exif, &x, &y);
  require(uprightXmp(block).size() == block.size);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  const BytesView file = {bytes, count};
  readAsPng(file);
  if (isPngFile(file)) readAsPng(withChecksums(file));
  for (const char* extension : {"", "tga", "ico", "cur", "pbm", "bmp"}) {
    readAsSmallFormat(file, extension);
  }
  readAsBitmap(file);
  readAsNotes(file);
  return 0;
}
