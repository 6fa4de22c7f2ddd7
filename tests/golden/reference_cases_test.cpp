// Worked results, byte for byte: effect pictures, height fields between the passes, tables,
// textures and rip-maps. A missing expectation is a failure.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "pictures/picture_surface.h"
#include "tests/support/case_list.h"
#include "tests/support/hosts/direct_render.h"
#include "tests/support/picture_reader.h"

static const std::string kCases = std::string(MORVALIS_TEST_DATA) + "/reference_cases/";

static TestPicture pictureAt(const std::string& path) {
  TestPicture picture;
  EXPECT_TRUE(readPicture(kCases + path, &picture)) << path;
  return picture;
}

// The cases name `.bmp` files; beside each lies the same picture in a form that tests read.
static std::string portableTwin(const std::string& bitmapPath, const char* suffix) {
  return bitmapPath.substr(0, bitmapPath.size() - 4) + suffix;
}

static DirectInput inputOf(const GoldenCase& golden) {
  DirectInput input = {};
  input.settings = defaultSettings();
  EXPECT_TRUE(applyCaseSettings(golden, &input.settings)) << golden.name;
  input.settings.previewMode = golden.previewScale == 0 ? 0 : 1;
  input.settings.previewScale = golden.previewScale == 0 ? 1 : golden.previewScale;
  const TestPicture image = pictureAt(golden.image);
  input.width = image.width;
  input.height = image.height;
  input.planes = image.planes;
  input.source = image.samples;
  if (!golden.mask.empty()) input.mask = pictureAt(golden.mask).samples;
  input.environment = pictureAt(portableTwin(golden.environment, ".ppm")).samples;
  if (!golden.texture.empty()) {
    const TestPicture texture = pictureAt(portableTwin(golden.texture, ".pgm"));
    input.texture = texture.samples;
    input.textureWidth = texture.width;
    input.textureHeight = texture.height;
  }
  input.seed = golden.seed;
  return input;
}

// Says where two pictures differ, and how much.
static ::testing::AssertionResult samePicture(const std::vector<uint8_t>& actual,
                                              const TestPicture& expected) {
  if (actual.size() != expected.samples.size()) {
    return ::testing::AssertionFailure()
           << actual.size() << " samples instead of " << expected.samples.size();
  }
  size_t different = 0;
  size_t first = 0;
  int largest = 0;
  for (size_t i = 0; i < actual.size(); ++i) {
    if (actual[i] == expected.samples[i]) continue;
    if (different++ == 0) first = i;
    largest = std::max(largest, std::abs(actual[i] - expected.samples[i]));
  }
  if (different == 0) return ::testing::AssertionSuccess();
  const size_t pixel = first / expected.planes;
  return ::testing::AssertionFailure()
         << different << " samples differ, by up to " << largest << "; first at column "
         << pixel % expected.width << ", row " << pixel / expected.width << ": "
         << int{actual[first]} << " instead of " << int{expected.samples[first]};
}

TEST(ReferenceCases, EffectPictures) {
  std::vector<GoldenCase> cases;
  ASSERT_TRUE(readCaseList(kCases + "cases.txt", &cases));
  ASSERT_EQ(cases.size(), 66U);
  for (const GoldenCase& golden : cases) {
    const DirectOutput output = renderDirectly(inputOf(golden));
    EXPECT_TRUE(samePicture(output.effect, pictureAt(golden.effect))) << golden.name;
  }
}

static std::vector<int16_t> fieldAt(const std::string& path) {
  std::ifstream file(kCases + path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  std::vector<int16_t> cells;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    cells.push_back(static_cast<int16_t>(static_cast<uint8_t>(bytes[i]) |
                                         static_cast<uint8_t>(bytes[i + 1]) << 8));
  }
  return cells;
}

TEST(ReferenceCases, HeightFieldsAfterEveryPass) {
  struct FieldCase {
    const char* name;
    const char* mask;  // null: none
    int32_t radius;
    int32_t textureChoice;
  };
  const FieldCase fieldCases[] = {{"defaults", "in/mask-aa.pgm", 10, 6},
                                  {"noise", "in/mask-noise.pgm", 4, 6},
                                  {"no-mask", nullptr, 7, 6},
                                  {"hard-radius-30", "in/mask-hard.pgm", 30, 1}};
  for (const FieldCase& fieldCase : fieldCases) {
    GoldenCase golden;
    golden.image = "in/photo.ppm";
    golden.mask = fieldCase.mask == nullptr ? "" : fieldCase.mask;
    golden.environment = "in/environment.bmp";
    golden.seed = 1;
    DirectInput input = inputOf(golden);
    input.settings.radius = fieldCase.radius;
    input.settings.textureChoice = fieldCase.textureChoice;
    int32_t compared = 0;
    renderDirectly(input, [&](const SessionRecord& session, int32_t phase) {
      char path[80];
      std::snprintf(path, sizeof(path), "fields/%s-phase-%02d.i16", fieldCase.name, phase);
      const std::vector<int16_t> expected = fieldAt(path);
      const auto* cells = static_cast<const int16_t*>(session.render.heightField.address);
      ASSERT_EQ(expected.size(),
                static_cast<size_t>(session.render.fieldStride) * session.render.fieldRows)
          << path;
      ++compared;
      // Without stamps the field says what it should only when both of its passes are through.
      if (phase == kPhaseStamp && session.render.fastField.inUse != 0) return;
      for (size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(cells[i], expected[i]) << path << ", cell " << i % session.render.fieldStride
                                         << ", row " << i / session.render.fieldStride;
      }
    });
    EXPECT_EQ(compared, 5) << fieldCase.name;
  }
}

// Runs to the start of the shading, where all tables stand.
static void atShading(const DirectInput& input,
                      const std::function<void(const SessionRecord& session)>& look) {
  bool looked = false;
  renderDirectly(input, [&](const SessionRecord& session, int32_t phase) {
    if (phase != kPhaseProfile) return;
    look(session);
    looked = true;
  });
  EXPECT_TRUE(looked);
}

static DirectInput plainInput() {
  DirectInput input = {};
  input.settings = defaultSettings();
  input.width = 8;
  input.height = 8;
  input.planes = 3;
  input.source.assign(8 * 8 * 3, 200);
  input.seed = 1;
  return input;
}

TEST(ReferenceCases, Profiles) {
  for (int32_t shape = 1; shape <= kShapeCount; ++shape) {
    char path[80];
    std::snprintf(path, sizeof(path), "tables/profile-shape-%02d.txt", shape);
    std::ifstream file(kCases + path);
    DirectInput input = plainInput();
    input.settings.shape = shape;
    input.settings.radius = 50;
    input.settings.height = 100;
    atShading(input, [&](const SessionRecord& session) {
      for (int32_t i = 0; i < kProfileEntries; ++i) {
        int32_t expected = 0;
        ASSERT_TRUE(file >> expected) << path << " ends at " << i;
        ASSERT_EQ(session.render.profile[i], expected) << path << ", entry " << i;
      }
    });
  }
}

static std::string words(std::initializer_list<int64_t> values) {
  std::string text;
  for (int64_t value : values) {
    if (!text.empty()) text += ' ';
    text += std::to_string(value);
  }
  return text;
}

static std::string words(const Rgb32& colour) {
  return words({colour.red, colour.green, colour.blue});
}

// What the product has where a line of a table file names a value: the text after name and index.
static std::string valueNamed(const SessionRecord& session, const std::string& name, int32_t i) {
  const ShadingTables& tables = session.shading;
  const RenderState& render = session.render;
  const LightStencil& stencil = tables.stencils[i % kStencilSlots];
  if (name == "stencil") return words({stencil.w00, stencil.w01, stencil.w10, stencil.w11});
  if (name == "angle") return words({tables.reflectionAngle[i]});
  if (name == "spectrum") return words(tables.iridescenceSpectrum[i]);
  if (name == "causticSpectrum") return words(tables.causticSpectrum[i]);
  if (name == "iridescence") return words(tables.iridescence[i]);
  if (name == "tone") return words({session.pattern.toneTable[i]});
  if (name == "causticTable") return words(tables.caustic[i]);
  if (name == "ripLevel") return words({tables.ripMapLevel[i]});
  if (name == "proceduralWeight") return words({tables.proceduralWeight[i]});
  const EffectSettings* settings = settingsOf(&session);
  if (name == "lightAngles") {
    return words({settings->light1Angle, settings->light2Angle}) + " elevations " +
           words({settings->light1Elevation, settings->light2Elevation});
  }
  if (name == "spectrumSums") return words(tables.iridescenceSums);
  if (name == "effRadius") {
    return words({render.effRadius}) + " coneStep " + words({render.coneStep}) + " kernelStride " +
           words({render.kernelStride});
  }
  if (name == "textureScaleFactor") {
    return words({render.textureScaleFactor}) + " textureWidth " + words({settings->textureWidth}) +
           " textureHeight " + words({settings->textureHeight});
  }
  if (name == "depthLow") return words({render.depthLow});
  if (name == "reflectWeight") {
    return words({tables.reflectWeight}) + " reflectRest " + words({tables.reflectRest});
  }
  return "unknown";
}

static bool isIndexed(const std::string& name) {
  const char* const single[] = {"lightAngles",        "spectrumSums", "effRadius",
                                "textureScaleFactor", "depthLow",     "reflectWeight"};
  return std::find(std::begin(single), std::end(single), name) == std::end(single);
}

static void compareTables(const std::string& path, const SessionRecord& session) {
  std::ifstream file(kCases + path);
  std::string line;
  int32_t compared = 0;
  while (std::getline(file, line)) {
    std::istringstream parts(line);
    std::string name;
    int32_t index = 0;
    parts >> name;
    if (isIndexed(name)) parts >> index;
    std::string expected;
    std::getline(parts >> std::ws, expected);
    ASSERT_EQ(valueNamed(session, name, index), expected) << path << ": " << name << " " << index;
    ++compared;
  }
  EXPECT_EQ(compared, 2946) << path;
}

TEST(ReferenceCases, Tables) {
  struct TableCase {
    const char* path;
    int32_t iriColors;
    int32_t iridescence;
  };
  const TableCase tableCases[] = {{"tables/other-defaults.txt", 0, 100},
                                  {"tables/other-colours-50.txt", 50, 100},
                                  {"tables/other-colours-100-iridescence-40.txt", 100, 40}};
  for (const TableCase& tableCase : tableCases) {
    DirectInput input = plainInput();
    input.settings.iriColors = tableCase.iriColors;
    input.settings.iridescence = tableCase.iridescence;
    atShading(input, [&](const SessionRecord& session) { compareTables(tableCase.path, session); });
  }
}

TEST(ReferenceCases, BuiltInTextures) {
  for (int32_t choice = 1; choice < kTextureChoiceFile; ++choice) {
    char path[80];
    std::snprintf(path, sizeof(path), "textures/choice-%02d-seed-1.pgm", choice);
    const TestPicture expected = pictureAt(path);
    DirectInput input = plainInput();
    input.settings.textureChoice = choice;
    atShading(input, [&](const SessionRecord& session) {
      const PictureSurface* surface = session.pictures.texture;
      std::vector<uint8_t> grey;
      for (int32_t i = 0; i < kTextureSide * kTextureSide; ++i) grey.push_back(surface->rgb[3 * i]);
      EXPECT_TRUE(samePicture(grey, expected)) << path;
    });
  }
}

TEST(ReferenceCases, RipMapsOfTurnedEnvironments) {
  for (int32_t turns = 0; turns < 4; ++turns) {
    const std::string path = "rip-map/turns-" + std::to_string(turns) + ".ppm";
    DirectInput input = plainInput();
    input.environment = pictureAt("in/environment.ppm").samples;
    input.settings.environmentTurns = turns;
    atShading(input, [&](const SessionRecord& session) {
      const uint8_t* rgb = session.pictures.environment->rgb;
      EXPECT_TRUE(samePicture({rgb, rgb + 128 * 128 * 3}, pictureAt(path))) << path;
    });
  }
}
