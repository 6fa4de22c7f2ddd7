// Pictures that are packed come back: all of them exactly, rough ones nearly.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "pictures/sources/packed_pictures.h"
#include "resources/artwork/drawing/picture_packing.h"
#include "tests/support/random_inputs.h"

// Grounds, edges, slopes and noise, and coverage of every kind.
static Picture someOfEverything(int32_t width, int32_t height) {
  TestRandom random = {7};
  Picture picture = {width, height, {}, {}};
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const int32_t kind = 4 * x / width;
      for (int32_t i = 0; i < 3; ++i) {
        const int32_t slope = (5 * x + 3 * y + 40 * i) & 255;
        const int32_t noise = randomBetween(&random, 0, 255);
        const int32_t values[] = {222, (x + y) % 7 == 0 ? 0 : 255, slope, noise};
        picture.rgb.push_back(static_cast<uint8_t>(values[kind]));
      }
      picture.alpha.push_back(static_cast<uint8_t>(kind == 0 ? 0 : kind == 1 ? 255 : 3 * x));
    }
  }
  return picture;
}

static std::vector<uint8_t> packOf(const std::vector<PackedPicture>& pictures) {
  const std::filesystem::path path = ::testing::TempDir() + "morvalis-pack";
  writePack(path, pictures);
  std::ifstream file(path, std::ios::binary);
  std::vector<uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
  std::filesystem::remove(path);
  return bytes;
}

TEST(PackedPictures, ComeBack) {
  const Picture large = someOfEverything(61, 40);
  Picture opaque = someOfEverything(33, 9);
  opaque.alpha.clear();
  const std::vector<PackedPicture> pictures = {{300, large, false},
                                               {7, opaque, false},
                                               {9, opaque, true},
                                               {8, someOfEverything(1, 1), false}};
  const std::vector<uint8_t> pack = packOf(pictures);
  const auto length = static_cast<int32_t>(pack.size());
  for (const PackedPicture& packed : pictures) {
    PackRow row = {};
    ASSERT_TRUE(findPackRow(pack.data(), length, packed.id, &row));
    ASSERT_EQ(row.width, packed.picture.width);
    ASSERT_EQ(row.height, packed.picture.height);
    ASSERT_EQ(row.hasCoverage, packed.picture.alpha.empty() ? 0 : 1);
    std::vector<uint8_t> rgb(packed.picture.rgb.size());
    std::vector<uint8_t> coverage(packed.picture.alpha.size());
    ASSERT_TRUE(
        unpackPicture(pack.data(), row, rgb.data(), coverage.empty() ? nullptr : coverage.data()));
    EXPECT_EQ(coverage, packed.picture.alpha);
    int32_t farthest = 0;
    for (size_t i = 0; i < rgb.size(); ++i) {
      farthest = std::max(farthest, std::abs(rgb[i] - packed.picture.rgb[i]));
    }
    EXPECT_EQ(farthest, packed.isRough ? 1 : 0) << packed.id;
  }
  PackRow row = {};
  EXPECT_FALSE(findPackRow(pack.data(), length, 10, &row));
  EXPECT_FALSE(findPackRow(pack.data(), 3, 7, &row));
  EXPECT_FALSE(findPackRow(pack.data(), length / 2, 8, &row)) << "cut off";
}
