#include "platform/unix/bitmap_file.h"

#include <algorithm>
#include <cstdlib>

#include "platform/bitmap_file_check.h"

constexpr size_t kFileHeaderBytes = 14;
constexpr uint32_t kShortInfoBytes = 12;  // the oldest info header, with 16-bit sides
constexpr uint32_t kInfoBytes = 40;
constexpr uint32_t kInfoWithMasks = 52;
constexpr uint32_t kInfoWithAlphaMask = 56;
constexpr int32_t kMasked = 3;
constexpr int32_t kMaskedWithAlpha = 6;

static uint32_t numberAt(const uint8_t* bytes, size_t offset, int count) {
  uint32_t number = 0;
  for (int i = 0; i < count; ++i) number |= uint32_t{bytes[offset + i]} << (8 * i);
  return number;
}

static bool kindExists(const BitmapLayout& layout) {
  switch (layout.packing) {
    case 0:
      return layout.bits == 1 || layout.bits == 4 || layout.bits == 8 || layout.bits == 16 ||
             layout.bits == 24 || layout.bits == 32;
    case 1:
      return layout.bits == 8;
    case 2:
      return layout.bits == 4;
    case kMasked:
      return layout.bits == 16 || layout.bits == 32;
    default:
      return false;
  }
}

// Colour masks stand in the longer headers, or behind the usual one.
static void readMasks(const uint8_t* info, size_t bytes, uint32_t header, BitmapLayout* layout) {
  const bool wide = layout->bits == 32;
  const uint32_t usual[4] = {wide ? 0xFF0000U : 0x7C00U, wide ? 0xFF00U : 0x3E0U,
                             wide ? 0xFFU : 0x1FU, 0};
  std::copy_n(usual, 4, layout->masks);
  if (layout->packing != kMasked) return;
  const int count = header >= kInfoWithAlphaMask ? 4 : 3;
  for (int i = 0; i < count; ++i) {
    const size_t at = kInfoBytes + 4 * static_cast<size_t>(i);
    if (at + 4 <= bytes) layout->masks[i] = numberAt(info, at, 4);
  }
}

bool readBitmapLayout(const uint8_t* info, size_t bytes, size_t rows, BitmapLayout* layout) {
  *layout = {};
  if (bytes < kShortInfoBytes) return false;
  const uint32_t header = numberAt(info, 0, 4);
  int64_t height = 0;
  uint32_t colors = 0;
  if (header == kShortInfoBytes) {
    layout->width = static_cast<int32_t>(numberAt(info, 4, 2));
    height = static_cast<int16_t>(numberAt(info, 6, 2));
    layout->bits = static_cast<int32_t>(numberAt(info, 10, 2));
    layout->colorBytes = 3;
  } else {
    if (header < kInfoBytes || header > bytes) return false;
    layout->width = static_cast<int32_t>(numberAt(info, 4, 4));
    height = static_cast<int32_t>(numberAt(info, 8, 4));
    layout->bits = static_cast<int32_t>(numberAt(info, 14, 2));
    layout->packing = static_cast<int32_t>(numberAt(info, 16, 4));
    layout->dotsPerMeterX = static_cast<int32_t>(numberAt(info, 24, 4));
    layout->dotsPerMeterY = static_cast<int32_t>(numberAt(info, 28, 4));
    colors = numberAt(info, 32, 4);
    layout->colorBytes = 4;
  }
  if (layout->packing == kMaskedWithAlpha) layout->packing = kMasked;
  layout->fromTop = height < 0;
  height = std::abs(height);
  if (layout->width < 1 || height < 1 || height > INT32_MAX || !kindExists(*layout)) return false;
  layout->height = static_cast<int32_t>(height);
  readMasks(info, bytes, header, layout);
  layout->palette = header;
  if (layout->packing == kMasked && header == kInfoBytes) layout->palette = kInfoWithMasks;
  if (layout->bits <= 8) {
    const uint32_t most = 1U << layout->bits;
    layout->colors = static_cast<int32_t>(colors == 0 ? most : std::min(colors, most));
  }
  const size_t behindPalette =
      layout->palette + static_cast<size_t>(layout->colors) * layout->colorBytes;
  layout->rows = rows == 0 ? behindPalette : rows;
  return layout->rows <= bytes && behindPalette <= bytes;
}

bool readBitmapFileLayout(const uint8_t* file, size_t bytes, size_t* info, BitmapLayout* layout) {
  if (bytes < kFileHeaderBytes + kShortInfoBytes || file[0] != 'B' || file[1] != 'M') return false;
  const size_t rows = numberAt(file, 10, 4);
  *info = kFileHeaderBytes;
  if (rows < kFileHeaderBytes) return false;
  return readBitmapLayout(file + *info, bytes - *info, rows - *info, layout);
}

// --- Pixels ---------------------------------------------------------------------------------

// A channel that a mask leaves of a pixel, as 8 bits.
struct Channel {
  uint32_t mask;
  int shift;
  int bits;
};

static Channel channelOf(uint32_t mask) {
  Channel channel = {mask, 0, 0};
  if (mask == 0) return channel;
  while ((mask >> channel.shift & 1) == 0) ++channel.shift;
  while (channel.shift + channel.bits < 32 && (mask >> (channel.shift + channel.bits) & 1) != 0) {
    ++channel.bits;
  }
  return channel;
}

static uint8_t valueOf(const Channel& channel, uint32_t pixel) {
  const uint32_t value = (pixel & channel.mask) >> channel.shift;
  if (channel.bits > 8) return static_cast<uint8_t>(value >> (channel.bits - 8));
  return static_cast<uint8_t>(channel.bits == 0 ? 0 : value << (8 - channel.bits));
}

struct Palette {
  uint8_t rgb[256][3];
};

static Palette readPalette(const uint8_t* info, const BitmapLayout& layout, bool* grey) {
  Palette palette = {};
  *grey = layout.colors > 0;
  for (int32_t i = 0; i < layout.colors; ++i) {
    const uint8_t* color = info + layout.palette + static_cast<size_t>(i) * layout.colorBytes;
    for (int channel = 0; channel < 3; ++channel) palette.rgb[i][channel] = color[2 - channel];
    *grey = *grey && color[0] == color[1] && color[1] == color[2];
  }
  return palette;
}

static uint8_t* rowAt(const BitmapLayout& layout, BitmapPixels* pixels, int32_t y) {
  const int32_t row = layout.fromTop ? y : layout.height - 1 - y;
  return &pixels->rgb[static_cast<size_t>(row) * static_cast<size_t>(layout.width) * 3];
}

static void readIndexedRow(const uint8_t* row, const BitmapLayout& layout, const Palette& palette,
                           uint8_t* to) {
  for (int32_t x = 0; x < layout.width; ++x) {
    const int32_t bit = x * layout.bits;
    const int32_t shift = 8 - layout.bits - bit % 8;
    const int32_t index = row[bit / 8] >> shift & ((1 << layout.bits) - 1);
    to = std::copy_n(palette.rgb[index], 3, to);
  }
}

static void readMaskedRow(const uint8_t* row, const BitmapLayout& layout, uint8_t* to,
                          uint8_t* alpha) {
  const int bytes = layout.bits / 8;
  Channel channels[4];
  for (int i = 0; i < 4; ++i) channels[i] = channelOf(layout.masks[i]);
  for (int32_t x = 0; x < layout.width; ++x, row += bytes) {
    const uint32_t pixel = numberAt(row, 0, bytes);
    for (int i = 0; i < 3; ++i) *to++ = valueOf(channels[i], pixel);
    if (alpha != nullptr) *alpha++ = valueOf(channels[3], pixel);
  }
}

static bool readPlainRows(const uint8_t* info, size_t bytes, const BitmapLayout& layout,
                          const Palette& palette, BitmapPixels* pixels) {
  const size_t rowBytes = (static_cast<size_t>(layout.width) * layout.bits + 31) / 32 * 4;
  if (rowBytes > (bytes - layout.rows) / static_cast<size_t>(layout.height)) return false;
  const bool masked = layout.bits == 16 || layout.bits == 32;
  for (int32_t y = 0; y < layout.height; ++y) {
    const uint8_t* row = info + layout.rows + static_cast<size_t>(y) * rowBytes;
    uint8_t* to = rowAt(layout, pixels, y);
    uint8_t* alpha = nullptr;
    if (!pixels->alpha.empty())
      alpha = &pixels->alpha[static_cast<size_t>(to - pixels->rgb.data()) / 3];
    if (layout.bits <= 8) {
      readIndexedRow(row, layout, palette, to);
    } else if (masked) {
      readMaskedRow(row, layout, to, alpha);
    } else {
      for (int32_t x = 0; x < layout.width; ++x, row += 3) {
        for (int channel = 0; channel < 3; ++channel) *to++ = row[2 - channel];
      }
    }
  }
  return true;
}

// Runs of equal pixels, and stretches of others, to the end mark. What they skip is colour 0.
static bool readRuns(const uint8_t* info, size_t bytes, const BitmapLayout& layout,
                     const Palette& palette, BitmapPixels* pixels) {
  for (size_t i = 0; i < pixels->rgb.size(); ++i) pixels->rgb[i] = palette.rgb[0][i % 3];
  size_t at = layout.rows;
  int32_t x = 0;
  int32_t y = 0;
  const auto put = [&](int index) {
    if (x < layout.width && y < layout.height) {
      std::copy_n(palette.rgb[index], 3, rowAt(layout, pixels, y) + 3 * x);
    }
    if (x < layout.width) ++x;
  };
  const bool half = layout.bits == 4;
  const auto indexIn = [half](uint8_t byte, int i) {
    return half ? (i % 2 == 0 ? byte >> 4 : byte & 15) : byte;
  };
  while (at + 2 <= bytes) {
    const int count = info[at];
    const uint8_t byte = info[at + 1];
    at += 2;
    if (count > 0) {
      for (int i = 0; i < count; ++i) put(indexIn(byte, i));
    } else if (byte == 0) {
      x = 0;
      ++y;
    } else if (byte == 1) {
      return true;
    } else if (byte == 2) {
      if (at + 2 > bytes) return false;
      x = std::min(layout.width, x + info[at]);
      y += info[at + 1];
      at += 2;
    } else {
      const size_t whole = half ? (byte + 1U) / 2 : byte;
      const size_t length = (whole + 1) & ~size_t{1};
      if (length > bytes - at) return false;
      for (int i = 0; i < byte; ++i)
        put(indexIn(info[at + static_cast<size_t>(half ? i / 2 : i)], i));
      at += length;
    }
    if (y > layout.height) return false;
  }
  return false;
}

bool readBitmapPixels(const uint8_t* info, size_t bytes, const BitmapLayout& layout,
                      BitmapPixels* pixels) {
  const size_t count = static_cast<size_t>(layout.width) * static_cast<size_t>(layout.height);
  const bool runs = layout.packing == 1 || layout.packing == 2;
  const size_t rowBits = static_cast<size_t>(layout.width) * static_cast<size_t>(layout.bits);
  // Before the memory is taken.
  if (runs &&
      !runsMayHold(static_cast<int64_t>(count), static_cast<int64_t>(bytes - layout.rows))) {
    return false;
  }
  if (!runs && rowBits / 8 > bytes / static_cast<size_t>(layout.height)) return false;
  pixels->width = layout.width;
  pixels->height = layout.height;
  pixels->dotsPerMeterX = layout.dotsPerMeterX;
  pixels->dotsPerMeterY = layout.dotsPerMeterY;
  const Palette palette = readPalette(info, layout, &pixels->grey);
  pixels->rgb.resize(count * 3);
  if (layout.masks[3] != 0 && layout.bits >= 16) pixels->alpha.resize(count);
  return runs ? readRuns(info, bytes, layout, palette, pixels)
              : readPlainRows(info, bytes, layout, palette, pixels);
}
