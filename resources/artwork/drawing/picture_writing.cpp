#include "resources/artwork/drawing/picture_writing.h"

#include <fstream>
#include <stdexcept>

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kFileHeaderBytes = 14;
constexpr uint32_t kInfoBytes = 40;
constexpr uint32_t kDirectoryBytes = 6;
constexpr uint32_t kEntryBytes = 16;
constexpr uint32_t kPixelsPerMetre = 3780;  // 96 an inch
constexpr uint32_t kIconKind = 1;
constexpr uint32_t kCursorKind = 2;

static void append(Bytes* bytes, uint32_t value, int32_t count) {
  for (int32_t i = 0; i < count; ++i) bytes->push_back(static_cast<uint8_t>(value >> 8 * i));
}

static void padRow(Bytes* bytes, size_t rowStart) {
  while ((bytes->size() - rowStart) % 4 != 0) bytes->push_back(0);
}

static void appendInfo(Bytes* bytes, int32_t width, int32_t height, uint32_t bits,
                       uint32_t pixelBytes, uint32_t colours) {
  append(bytes, kInfoBytes, 4);
  append(bytes, static_cast<uint32_t>(width), 4);
  append(bytes, static_cast<uint32_t>(height), 4);
  append(bytes, 1, 2);  // planes
  append(bytes, bits, 2);
  append(bytes, 0, 4);  // not compressed
  append(bytes, pixelBytes, 4);
  append(bytes, kPixelsPerMetre, 4);
  append(bytes, kPixelsPerMetre, 4);
  append(bytes, colours, 4);
  append(bytes, 0, 4);
}

static void save(const std::filesystem::path& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error(path.string() + ": the file cannot be written");
}

// Rows of an 8-bit or 24-bit bitmap, from the bottom.
static Bytes bitmapRows(const Picture& picture, int32_t bytesPerPixel) {
  Bytes rows;
  for (int32_t y = picture.height - 1; y >= 0; --y) {
    const size_t rowStart = rows.size();
    for (int32_t x = 0; x < picture.width; ++x) {
      const uint8_t* rgb = &picture.rgb[3 * (static_cast<size_t>(y) * picture.width + x)];
      for (int32_t i = bytesPerPixel - 1; i >= 0; --i) rows.push_back(rgb[i]);
    }
    padRow(&rows, rowStart);
  }
  return rows;
}

static void writeRows(const std::filesystem::path& path, const Picture& picture,
                      int32_t bytesPerPixel, const Bytes& palette) {
  const Bytes rows = bitmapRows(picture, bytesPerPixel);
  const uint32_t start = kFileHeaderBytes + kInfoBytes + static_cast<uint32_t>(palette.size());
  const auto pixelBytes = static_cast<uint32_t>(rows.size());
  Bytes bytes = {'B', 'M'};
  append(&bytes, start + pixelBytes, 4);
  append(&bytes, 0, 4);
  append(&bytes, start, 4);
  appendInfo(&bytes, picture.width, picture.height, static_cast<uint32_t>(8 * bytesPerPixel),
             pixelBytes, static_cast<uint32_t>(palette.size() / 4));
  bytes.insert(bytes.end(), palette.begin(), palette.end());
  bytes.insert(bytes.end(), rows.begin(), rows.end());
  save(path, bytes);
}

void writeBitmap(const std::filesystem::path& path, const Picture& picture) {
  writeRows(path, picture, 3, {});
}

void writeGreyBitmap(const std::filesystem::path& path, const Picture& picture) {
  Bytes palette;
  for (uint32_t grey = 0; grey < 256; ++grey) append(&palette, grey * 0x010101U, 4);
  writeRows(path, picture, 1, palette);
}

// One picture of an icon or cursor: colours with alpha, then the mask of what is transparent.
static Bytes iconImage(const Picture& picture) {
  Bytes rows;
  Bytes mask;
  for (int32_t y = picture.height - 1; y >= 0; --y) {
    const size_t rowStart = mask.size();
    for (int32_t x = 0; x < picture.width; ++x) {
      const size_t pixel = static_cast<size_t>(y) * picture.width + x;
      for (int32_t i = 2; i >= 0; --i) rows.push_back(picture.rgb[3 * pixel + i]);
      rows.push_back(picture.alpha[pixel]);
      if (x % 8 == 0) mask.push_back(0);
      if (picture.alpha[pixel] < 128) mask.back() |= static_cast<uint8_t>(128 >> x % 8);
    }
    padRow(&mask, rowStart);
  }
  Bytes bytes;
  appendInfo(&bytes, picture.width, 2 * picture.height, 32,
             static_cast<uint32_t>(rows.size() + mask.size()), 0);
  bytes.insert(bytes.end(), rows.begin(), rows.end());
  bytes.insert(bytes.end(), mask.begin(), mask.end());
  return bytes;
}

// The two 16-bit words of a directory row are planes and bits for an icon, the hot spot for a
// cursor.
static void writeDirectory(const std::filesystem::path& path, uint32_t kind,
                           const std::vector<Picture>& pictures, uint32_t first, uint32_t second) {
  Bytes bytes;
  Bytes images;
  append(&bytes, 0, 2);
  append(&bytes, kind, 2);
  append(&bytes, static_cast<uint32_t>(pictures.size()), 2);
  const auto start = kDirectoryBytes + kEntryBytes * static_cast<uint32_t>(pictures.size());
  for (const Picture& picture : pictures) {
    const Bytes image = iconImage(picture);
    append(&bytes, static_cast<uint32_t>(picture.width), 1);
    append(&bytes, static_cast<uint32_t>(picture.height), 1);
    append(&bytes, 0, 2);
    append(&bytes, first, 2);
    append(&bytes, second, 2);
    append(&bytes, static_cast<uint32_t>(image.size()), 4);
    append(&bytes, start + static_cast<uint32_t>(images.size()), 4);
    images.insert(images.end(), image.begin(), image.end());
  }
  bytes.insert(bytes.end(), images.begin(), images.end());
  save(path, bytes);
}

void writeIcon(const std::filesystem::path& path, const std::vector<Picture>& pictures) {
  writeDirectory(path, kIconKind, pictures, 1, 32);
}

void writeCursor(const std::filesystem::path& path, const Picture& picture, int32_t hotX,
                 int32_t hotY) {
  writeDirectory(path, kCursorKind, {picture}, static_cast<uint32_t>(hotX),
                 static_cast<uint32_t>(hotY));
}
