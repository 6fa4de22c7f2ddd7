// Windows bitmaps, and the icons and cursors that consist of them.

#include <algorithm>
#include <cmath>

#include "hosts/png_files/png_read.h"
#include "hosts/small_formats/small_formats.h"
#include "platform/unix/bitmap_file.h"

bool isBitmap(BytesView file, const std::string&) {
  return beginsWith(file, "BM");
}

// Rows of three bytes, or of one where all of them are grey.
static void takePixels(BitmapPixels* pixels, Picture* picture) {
  HostPicture& colors = picture->colors;
  colors.width = pixels->width;
  colors.height = pixels->height;
  colors.planes = pixels->grey ? 1 : 3;
  picture->alpha = std::move(pixels->alpha);
  picture->metadata.dotsPerMeterX = std::max(0, pixels->dotsPerMeterX);
  picture->metadata.dotsPerMeterY = std::max(0, pixels->dotsPerMeterY);
  if (pixels->grey) {
    for (size_t i = 0; i < pixels->rgb.size(); i += 3) colors.samples.push_back(pixels->rgb[i]);
  } else {
    colors.samples = std::move(pixels->rgb);
  }
}

std::string readBitmap(BytesView file, RefuseSides refuse, Picture* picture) {
  size_t info = 0;
  BitmapLayout layout;
  if (!readBitmapFileLayout(file.data, file.size, &info, &layout)) return kCutOff;
  const std::string reason = refuse(layout.width, layout.height);
  if (!reason.empty()) return reason;
  BitmapPixels pixels;
  if (!readBitmapPixels(file.data + info, file.size - info, layout, &pixels)) return kCutOff;
  takePixels(&pixels, picture);
  return "";
}

// --- Icons ----------------------------------------------------------------------------------

constexpr size_t kIconHeaderBytes = 6;
constexpr size_t kIconEntryBytes = 16;

bool isIcon(BytesView file, const std::string&) {
  const uint32_t kind = littleEndianAt(file, 2, 2);
  const uint32_t count = littleEndianAt(file, 4, 2);
  return littleEndianAt(file, 0, 2) == 0 && (kind == 1 || kind == 2) && count > 0 &&
         file.size > kIconHeaderBytes + kIconEntryBytes;
}

// Below the colours of an icon's bitmap stands one bit a pixel for what is transparent.
static void readIconMask(BytesView info, const BitmapLayout& layout, Picture* picture) {
  const size_t width = static_cast<size_t>(layout.width);
  const size_t height = static_cast<size_t>(layout.height);
  const size_t colorRow = (width * static_cast<size_t>(layout.bits) + 31) / 32 * 4;
  const size_t maskRow = (width + 31) / 32 * 4;
  const size_t start = layout.rows + colorRow * height;
  if (start > info.size || maskRow * height > info.size - start) return;
  picture->alpha.resize(width * height);
  for (size_t y = 0; y < height; ++y) {
    const uint8_t* row = info.data + start + (height - 1 - y) * maskRow;
    for (size_t x = 0; x < width; ++x) {
      picture->alpha[y * width + x] = (row[x / 8] >> (7 - x % 8) & 1) != 0 ? 0 : 255;
    }
  }
}

static std::string readIconBitmap(BytesView entry, RefuseSides refuse, Picture* picture) {
  BitmapLayout layout;
  if (!readBitmapLayout(entry.data, entry.size, 0, &layout)) return kCutOff;
  layout.height /= 2;  // of the colours and of the mask together
  if (layout.height < 1) return kCutOff;
  const std::string reason = refuse(layout.width, layout.height);
  if (!reason.empty()) return reason;
  if (layout.bits == 32) layout.masks[3] = 0xFF000000U;
  BitmapPixels pixels;
  if (!readBitmapPixels(entry.data, entry.size, layout, &pixels)) return kCutOff;
  const auto shows = [](uint8_t alpha) { return alpha != 0; };
  const bool alphaUsed = std::any_of(pixels.alpha.begin(), pixels.alpha.end(), shows);
  if (!alphaUsed) pixels.alpha.clear();
  takePixels(&pixels, picture);
  if (!alphaUsed) readIconMask(entry, layout, picture);
  return "";
}

static std::string readIconPng(BytesView entry, RefuseSides refuse, Picture* picture) {
  PngHeader header;
  if (!readPngHeader(entry, &header)) return kCutOff;
  const std::string reason = refuse(header.width, header.height);
  if (!reason.empty()) return reason;
  const auto never = [] { return false; };
  if (!isPlainPng(header) || !readPngPixels(entry, header, never, picture)) return kCutOff;
  picture->deep = {};
  return "";
}

std::string readIcon(BytesView file, RefuseSides refuse, Picture* picture) {
  const uint32_t count = littleEndianAt(file, 4, 2);
  size_t best = 0;
  uint32_t most = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const size_t at = kIconHeaderBytes + i * kIconEntryBytes;
    if (at + kIconEntryBytes > file.size) return kCutOff;
    // A side of 0 stands for 256.
    const uint32_t width = (file.data[at] + 255U) % 256 + 1;
    const uint32_t height = (file.data[at + 1] + 255U) % 256 + 1;
    const uint32_t bits = std::min<uint32_t>(littleEndianAt(file, at + 6, 2), 32);
    const uint32_t size = width * height * 64 + bits;
    if (size <= most) continue;
    most = size;
    best = at;
  }
  const size_t length = littleEndianAt(file, best + 8, 4);
  const BytesView entry = file.part(littleEndianAt(file, best + 12, 4), length);
  if (entry.size < length) return kCutOff;
  return isPngFile(entry) ? readIconPng(entry, refuse, picture)
                          : readIconBitmap(entry, refuse, picture);
}

// --- Writing --------------------------------------------------------------------------------

static void put(uint32_t number, int count, FileBytes* bytes) {
  for (int i = 0; i < count; ++i) bytes->push_back(static_cast<uint8_t>(number >> (8 * i)));
}

void writeBitmap(const Picture& picture, OutputFile* output) {
  const HostPicture& colors = picture.colors;
  const bool grey = colors.planes == 1;
  const size_t width = static_cast<size_t>(colors.width);
  const size_t rowBytes = (width * static_cast<size_t>(colors.planes) + 3) / 4 * 4;
  const uint32_t start = 54 + (grey ? 1024 : 0);
  const uint64_t bytes = start + uint64_t{rowBytes} * static_cast<uint64_t>(colors.height);
  FileBytes header = {'B', 'M'};
  put(static_cast<uint32_t>(bytes), 4, &header);
  put(0, 4, &header);
  put(start, 4, &header);
  put(40, 4, &header);
  put(static_cast<uint32_t>(colors.width), 4, &header);
  put(static_cast<uint32_t>(colors.height), 4, &header);
  put(1, 2, &header);
  put(grey ? 8 : 24, 2, &header);
  put(0, 4, &header);
  put(static_cast<uint32_t>(bytes - start), 4, &header);
  put(static_cast<uint32_t>(std::lround(picture.metadata.dotsPerMeterX)), 4, &header);
  put(static_cast<uint32_t>(std::lround(picture.metadata.dotsPerMeterY)), 4, &header);
  put(grey ? 256 : 0, 4, &header);
  put(0, 4, &header);
  for (uint32_t i = 0; grey && i < 256; ++i) put(i * 0x010101U, 4, &header);
  appendOutput(header, output);
  FileBytes row(rowBytes);
  for (int32_t y = colors.height - 1; y >= 0; --y) {
    const size_t samples = width * static_cast<size_t>(colors.planes);
    const uint8_t* from = &colors.samples[static_cast<size_t>(y) * samples];
    if (grey) {
      std::copy_n(from, width, row.data());
    } else {
      for (size_t i = 0; i < samples; i += 3) {
        for (size_t channel = 0; channel < 3; ++channel) row[i + channel] = from[i + 2 - channel];
      }
    }
    appendOutput(row, output);
  }
}
