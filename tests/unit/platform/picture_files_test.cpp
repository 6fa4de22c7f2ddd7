// The picture files that the build embeds: every layout that is read, and that nothing else is.

#include "platform/resources/picture_files.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/resource_access.h"
#include "platform/resource_table.h"

using Bytes = std::vector<uint8_t>;

static void append(Bytes* file, uint64_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) file->push_back(static_cast<uint8_t>(number >> (8 * i)));
}

static void appendAll(Bytes* file, const Bytes& more) {
  file->insert(file->end(), more.begin(), more.end());
}

static void appendInfo(Bytes* file, int32_t width, int32_t height, int32_t bits, int32_t colors) {
  append(file, 40, 4);
  append(file, static_cast<uint32_t>(width), 4);
  append(file, static_cast<uint32_t>(height), 4);
  append(file, 1, 2);
  append(file, static_cast<uint32_t>(bits), 2);
  append(file, 0, 8);
  append(file, 0, 8);
  append(file, static_cast<uint32_t>(colors), 4);
  append(file, 0, 4);
}

static Bytes bitmapFile(int32_t width, int32_t height, int32_t bits, const Bytes& palette,
                        const Bytes& rows) {
  Bytes file = {'B', 'M'};
  append(&file, 0, 8);
  append(&file, static_cast<uint32_t>(54 + palette.size()), 4);
  appendInfo(&file, width, height, bits, static_cast<int32_t>(palette.size() / 4));
  appendAll(&file, palette);
  appendAll(&file, rows);
  return file;
}

struct IconEntry {
  uint8_t side;
  Bytes picture;
};

static Bytes iconFile(uint16_t kind, const std::vector<IconEntry>& entries) {
  Bytes file;
  append(&file, 0, 2);
  append(&file, kind, 2);
  append(&file, static_cast<uint32_t>(entries.size()), 2);
  size_t offset = 6 + 16 * entries.size();
  for (const IconEntry& entry : entries) {
    append(&file, entry.side, 1);
    append(&file, entry.side, 1);
    append(&file, 0, 2);
    append(&file, 8, 2);  // hot spot of a cursor
    append(&file, 9, 2);
    append(&file, static_cast<uint32_t>(entry.picture.size()), 4);
    append(&file, static_cast<uint32_t>(offset), 4);
    offset += entry.picture.size();
  }
  for (const IconEntry& entry : entries) appendAll(&file, entry.picture);
  return file;
}

static Bytes iconPicture(int32_t width, int32_t height, int32_t bits, const Bytes& rows,
                         const Bytes& mask) {
  Bytes picture;
  appendInfo(&picture, width, 2 * height, bits, 0);
  appendAll(&picture, rows);
  appendAll(&picture, mask);
  return picture;
}

TEST(PictureFiles, BitmapsOf24And8Bits) {
  // Two rows of one pixel, each padded to four bytes, the lower one first.
  const Bytes rows = {1, 2, 3, 0, 4, 5, 6, 0};
  EXPECT_EQ(readBitmapFile(bitmapFile(1, 2, 24, {}, rows)).rgb, (Bytes{6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(readBitmapFile(bitmapFile(1, -2, 24, {}, rows)).rgb, (Bytes{3, 2, 1, 6, 5, 4}));

  const Bytes palette = {10, 20, 30, 0, 11, 21, 31, 0};
  const FilePicture indexed = readBitmapFile(bitmapFile(3, 1, 8, palette, {1, 0, 1, 0}));
  EXPECT_EQ(indexed.rgb, (Bytes{31, 21, 11, 30, 20, 10, 31, 21, 11}));
  EXPECT_TRUE(indexed.coverage.empty());
  EXPECT_THROW(readBitmapFile(bitmapFile(1, 1, 8, palette, {2, 0, 0, 0})), std::runtime_error);
  EXPECT_THROW(readBitmapFile(bitmapFile(1, 1, 4, palette, {0, 0, 0, 0})), std::runtime_error);
}

TEST(PictureFiles, EveryCutIsNoticed) {
  Bytes file = bitmapFile(2, 2, 24, {}, Bytes(15, 9));  // the last row's padding is not needed
  EXPECT_NO_THROW(readBitmapFile(file));
  file.pop_back();
  EXPECT_NO_THROW(readBitmapFile(file));
  while (!file.empty()) {
    file.pop_back();
    EXPECT_THROW(readBitmapFile(file), std::runtime_error) << file.size();
  }
}

TEST(PictureFiles, IconsByAlphaOrMask) {
  const Bytes mask = {0x40, 0, 0, 0};
  const FilePicture alpha =
      readIconFile(iconFile(1, {{2, iconPicture(2, 1, 32, {1, 2, 3, 127, 4, 5, 6, 128}, mask)}}));
  EXPECT_EQ(alpha.rgb, (Bytes{3, 2, 1, 6, 5, 4}));
  EXPECT_EQ(alpha.coverage, (Bytes{0, 255})) << "the alpha, not the mask";
  const FilePicture masked =
      readIconFile(iconFile(1, {{2, iconPicture(2, 1, 24, {1, 2, 3, 4, 5, 6, 0, 0}, mask)}}));
  EXPECT_EQ(masked.coverage, (Bytes{255, 0}));
  const FilePicture without =
      readIconFile(iconFile(1, {{2, iconPicture(2, 1, 32, {1, 2, 3, 0, 4, 5, 6, 0}, mask)}}));
  EXPECT_EQ(without.coverage, (Bytes{255, 0})) << "no alpha at all";
}

TEST(PictureFiles, CursorsAndTheChoiceOfAPicture) {
  const Bytes small = iconPicture(1, 1, 32, {1, 2, 3, 100}, {0, 0, 0, 0});
  const Bytes wanted = iconPicture(32, 32, 32, Bytes(32 * 32 * 4, 77), Bytes(128, 0));
  const FilePicture first = readCursorFile(iconFile(2, {{1, small}}));
  EXPECT_EQ(first.coverage, (Bytes{100})) << "soft edges stay";
  EXPECT_EQ(first.hotX, 8);
  EXPECT_EQ(first.hotY, 9);
  EXPECT_EQ(readCursorFile(iconFile(2, {{1, small}, {32, wanted}})).width, 32);
  EXPECT_THROW(readIconFile(iconFile(2, {{1, small}})), std::runtime_error);
  EXPECT_THROW(readCursorFile(iconFile(2, {})), std::runtime_error);
}

TEST(ResourceTable, EveryRowIsFoundAndNothingElse) {
  int32_t before = 0;
  for (const EmbeddedPicture& row : embeddedPictures()) {
    EXPECT_LT(before, row.id);
    before = row.id;
    ResourcePicture picture = {};
    ASSERT_TRUE(findResourcePicture(row.id, &picture));
    EXPECT_EQ(picture.rgb, row.rgb);
    EXPECT_EQ(picture.coverage, row.coverage);
  }
  for (const EmbeddedPicture& row : embeddedCursors()) {
    EXPECT_EQ(findResourceCursor(row.id), &row);
  }
  ResourcePicture picture = {};
  EXPECT_FALSE(findResourcePicture(before + 1, &picture));
  EXPECT_FALSE(findResourcePicture(-1, &picture));
  EXPECT_EQ(findResourceCursor(0), nullptr);
}
