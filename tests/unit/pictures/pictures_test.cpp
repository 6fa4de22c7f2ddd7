// Picture files, turns, rip-map and resampling.

#include <gtest/gtest.h>

#include <cstring>

#include "pictures/area_resampling.h"
#include "pictures/environment_picture.h"
#include "pictures/picture_surface.h"
#include "pictures/rip_map.h"
#include "pictures/run_pictures.h"
#include "pictures/texture_picture.h"
#include "pictures/texture_preparation.h"
#include "platform/bitmap_decoder.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "services/random_numbers.h"
#include "tests/support/hosts/session_fixture.h"
#include "tests/support/random_inputs.h"

static std::vector<uint8_t> randomRgb(int32_t width, int32_t height, uint64_t seed) {
  TestRandom random = {seed};
  std::vector<uint8_t> rgb(static_cast<size_t>(width) * height * 3);
  for (uint8_t& value : rgb) value = static_cast<uint8_t>(randomBetween(&random, 0, 255));
  return rgb;
}

static std::vector<uint8_t> pixelsOf(const PictureSurface* surface) {
  return {surface->rgb, surface->rgb + size_t{3} * surface->width * surface->height};
}

TEST(TexturePictures, SizesTilingAndFailure) {
  SessionFixture fixture;
  fixture.settings.textureChoice = kTextureChoiceFile;
  SessionRecord* session = fixture.session.get();
  createBuiltInTexture(session);
  const PictureSurface* surface = fixture.settings.texturePicture;
  const std::vector<uint8_t> small = randomRgb(32, 16, 3);
  scriptBitmap("small.bmp", 32, 16, small);
  EXPECT_EQ(loadTexturePicture(session, "small.bmp"), 0);
  EXPECT_EQ(fixture.settings.textureWidth, 32);
  EXPECT_EQ(fixture.settings.textureHeight, 16);
  for (int32_t y = 0; y < 64; ++y) {
    for (int32_t x = 0; x < 64; ++x) {
      ASSERT_EQ(surfacePixel(surface, x, y)[1], small[3 * (y % 16 * 32 + x % 32) + 1]);
    }
  }
  const std::vector<uint8_t> large = randomRgb(300, 300, 4);
  scriptBitmap("large.bmp", 300, 300, large);
  EXPECT_EQ(loadTexturePicture(session, "large.bmp"), 0);
  EXPECT_EQ(fixture.settings.textureWidth, 256);
  EXPECT_EQ(fixture.settings.textureHeight, 256);
  EXPECT_EQ(surfacePixel(surface, 255, 255)[1], large[3 * (255 * 300 + 255) + 1]);
  const std::vector<uint8_t> before = pixelsOf(surface);
  for (const char* path : {"missing.bmp", ""}) {
    EXPECT_EQ(loadTexturePicture(session, path), 99);
    EXPECT_EQ(fixture.settings.textureWidth, 64);
    EXPECT_EQ(pixelsOf(surface), before);
  }
  EXPECT_EQ(loadTexturePicture(session, nullptr), 99);
}

TEST(EnvironmentPictures, TurnsAndRipMap) {
  SessionFixture fixture;
  SessionRecord* session = fixture.session.get();
  scriptBitmap("env.bmp", 64, 64, randomRgb(64, 64, 9));
  writeRememberedValue("ChromeFile", "env.bmp");
  createBuiltInEnvironment(session);
  EXPECT_STREQ(fixture.settings.environmentPath, "env.bmp");
  PictureSurface* surface = fixture.settings.environmentPicture;
  const std::vector<uint8_t> original = pixelsOf(surface);
  uint8_t corner[3];
  std::memcpy(corner, surfacePixel(surface, 0, 0), 3);
  rotateEnvironmentQuarter(surface);
  EXPECT_EQ(std::memcmp(surfacePixel(surface, 63, 0), corner, 3), 0) << "clockwise";
  for (int32_t i = 0; i < 3; ++i) rotateEnvironmentQuarter(surface);
  buildEnvironmentRipMap(session);
  EXPECT_EQ(pixelsOf(surface), original);
  for (int32_t i = 0; i < 128; ++i) {
    EXPECT_EQ(surfacePixel(surface, 127, i)[0], 0);
    EXPECT_EQ(surfacePixel(surface, i, 127)[0], 0);
  }
  std::vector<uint8_t> flat(64 * 64 * 3, 77);
  scriptBitmap("flat.bmp", 64, 64, flat);
  EXPECT_EQ(loadEnvironmentPicture(session, "flat.bmp"), 0);
  EXPECT_EQ(surfacePixel(surface, 126, 126)[2], 77);
  EXPECT_EQ(loadEnvironmentPicture(session, "missing.bmp"), 99);
  EXPECT_EQ(surfacePixel(surface, 5, 5)[0], 77) << "a failed load leaves the picture";
}

// Every source pixel spread over a fine grid that both sizes divide, then averaged.
static uint8_t meanByGrid(const DecodedBitmap& source, int32_t width, int32_t height, int32_t x,
                          int32_t y, int32_t channel) {
  int64_t sum = 0;
  for (int32_t gy = 0; gy < source.height; ++gy) {
    for (int32_t gx = 0; gx < source.width; ++gx) {
      const int32_t sourceX = (x * source.width + gx) / width;
      const int32_t sourceY = (y * source.height + gy) / height;
      sum += source.rgb[3 * (sourceY * source.width + sourceX) + channel];
    }
  }
  const int64_t area = int64_t{source.width} * source.height;
  return static_cast<uint8_t>((2 * sum + area) / (2 * area));
}

TEST(AreaResampling, EqualsTheMeanOfAFineGrid) {
  PictureSurface* surface = newPictureSurface(64, 64);
  for (const auto& [width, height] :
       {std::pair{64, 64}, {1, 1}, {1, 97}, {63, 65}, {128, 32}, {100, 70}, {31, 200}}) {
    std::vector<uint8_t> rgb =
        randomRgb(width, height, static_cast<uint64_t>(width * 1000 + height));
    const DecodedBitmap bitmap = {width, height, rgb.data()};
    resampleByArea(bitmap, surface, 64, 64);
    for (int32_t y = 0; y < 64; y += 3) {
      for (int32_t x = 0; x < 64; x += 3) {
        for (int32_t channel = 0; channel < 3; ++channel) {
          ASSERT_EQ(surfacePixel(surface, x, y)[channel], meanByGrid(bitmap, 64, 64, x, y, channel))
              << width << " x " << height << " at " << x << ", " << y;
        }
      }
    }
    if (width == 64 && height == 64) {
      EXPECT_EQ(pixelsOf(surface), rgb);
    }
  }
  disposePictureSurface(surface);
}

// What hardly any texel shows.
TEST(BuiltInTextures, NoiseOfTheChoices) {
  SessionFixture fixture;
  fixture.allocate(4, 4);
  SessionRecord* session = fixture.session.get();
  const PatternState& pattern = session->pattern;
  const auto setUp = [&](int32_t choice) {
    fixture.settings.textureChoice = choice;
    setUpPattern(session);
  };
  for (int32_t choice : {9, 10, 11}) {
    setUp(choice);
    EXPECT_EQ(pattern.noiseFloor, -127);
  }
  setUp(6);
  EXPECT_EQ(pattern.noiseFloor, 25);
  EXPECT_EQ(pattern.noiseStripe, 4);
  setUp(12);
  EXPECT_EQ(pattern.noiseStripe, 2);
}

TEST(BuiltInTextures, WalksRepeatWithoutASeam) {
  SessionFixture fixture;
  fixture.allocate(4, 4);
  fixture.settings.textureChoice = 2;
  seedRandomNumbers(5);
  createBuiltInTexture(fixture.session.get());
  EXPECT_EQ(fixture.settings.textureHeight, 240);
  const PictureSurface* surface = fixture.settings.texturePicture;
  EXPECT_EQ(std::memcmp(surfacePixel(surface, 0, 0), surfacePixel(surface, 0, 239), 3 * 256), 0);
  // Parameters that no choice gives, as a damaged file may bring, keep within the tables.
  fixture.settings.textureChoice = 99;
  for (uint32_t type : {0U, 1U, 6U, 7U, 9U, 10U, 13U, 0xFFFFFFFFU}) {
    for (uint32_t value : {0U, 7U, 0x80000000U, 0xFFFFFFFFU}) {
      uint32_t* parameters = fixture.settings.proceduralTexture;
      parameters[0] = type;
      parameters[1] = parameters[2] = parameters[3] = value;
      fixture.settings.proceduralTextureVariant = value;
      prepareTexture(fixture.session.get());
    }
  }
}
