#include "tests/support/hosts/bitmap_files.h"

#include <gtest/gtest.h>

#include <fstream>

static void append(std::vector<uint8_t>* bytes, uint32_t number, int32_t count) {
  for (int32_t i = 0; i < count; ++i) bytes->push_back(static_cast<uint8_t>(number >> (8 * i)));
}

// Rows from the bottom, each filled up to whole 32-bit words.
static void writeBitmap(const std::string& path, int32_t width, int32_t height, int32_t channels,
                        const std::vector<uint8_t>& palette, const std::vector<uint8_t>& samples) {
  const auto row = static_cast<size_t>(width) * static_cast<size_t>(channels);
  const size_t rowBytes = (row + 3) / 4 * 4;
  const auto offset = static_cast<uint32_t>(54 + palette.size());
  std::vector<uint8_t> bytes = {'B', 'M'};
  append(&bytes, static_cast<uint32_t>(offset + rowBytes * static_cast<size_t>(height)), 4);
  append(&bytes, 0, 4);
  append(&bytes, offset, 4);
  append(&bytes, 40, 4);
  append(&bytes, static_cast<uint32_t>(width), 4);
  append(&bytes, static_cast<uint32_t>(height), 4);
  append(&bytes, 1, 2);
  append(&bytes, static_cast<uint32_t>(8 * channels), 2);
  for (int32_t i = 0; i < 6; ++i) append(&bytes, 0, 4);
  bytes.insert(bytes.end(), palette.begin(), palette.end());
  for (int32_t y = height - 1; y >= 0; --y) {
    const uint8_t* from = samples.data() + static_cast<size_t>(y) * row;
    for (int32_t x = 0; x < width; ++x) {
      for (int32_t c = channels - 1; c >= 0; --c) bytes.push_back(from[x * channels + c]);
    }
    bytes.resize(bytes.size() + rowBytes - row);
  }
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.flush()) << path;
}

void writeColourBitmap(const std::string& path, int32_t width, int32_t height,
                       const std::vector<uint8_t>& rgb) {
  writeBitmap(path, width, height, 3, {}, rgb);
}

void writeGreyBitmap(const std::string& path, int32_t width, int32_t height,
                     const std::vector<uint8_t>& grey) {
  std::vector<uint8_t> palette;
  for (uint32_t i = 0; i < 256; ++i) append(&palette, i * 0x10101, 4);
  writeBitmap(path, width, height, 1, palette, grey);
}
