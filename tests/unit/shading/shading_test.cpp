// Single facts of the light: stencils, tables, lit cell blocks, tarnish, composition.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "settings/light_angles.h"
#include "shading/compose_pixel.h"
#include "shading/iridescence_table.h"
#include "shading/light_stencils.h"
#include "shading/prepare_shading.h"
#include "shading/shade_row.h"
#include "shading/spectral_tables.h"
#include "shading/tarnish.h"
#include "tests/support/hosts/session_fixture.h"

using Weights = std::array<int32_t, 4>;

static Weights stencilOf(int32_t angle) {
  SessionFixture fixture;
  setLightStencil(angle, kLight1Main, fixture.session.get());
  const LightStencil& s = fixture.session->shading.stencils[kLight1Main];
  return {s.w00, s.w01, s.w10, s.w11};
}

TEST(LightStencils, SixteenSectors) {
  const Weights sectors[16] = {
      {0, -645, 0, 645}, {0, -602, 301, 301},  {0, -456, 456, 0}, {301, -602, 301, 0},
      {645, -645, 0, 0}, {602, -301, 0, -301}, {456, 0, 0, -456}, {602, 0, -301, -301},
      {645, 0, -645, 0}, {301, 301, -602, 0},  {0, 456, -456, 0}, {0, 301, -602, 301},
      {0, 0, -645, 645}, {-301, 0, -301, 602}, {-456, 0, 0, 456}, {-301, -301, 0, 602}};
  for (int32_t angle = 0; angle < 1000; ++angle) {
    const int32_t sector = 2 * ((angle + 281) % 360) / 45;
    ASSERT_EQ(stencilOf(angle), sectors[sector]) << angle;
  }
  EXPECT_EQ(stencilOf(0), sectors[12]);
  EXPECT_EQ(stencilOf(79), sectors[0]);
  EXPECT_EQ(stencilOf(359), sectors[12]);
  stencilOf(INT32_MIN);  // must not leave the table
  SessionFixture fixture;
  for (int32_t slot : {-1, 6, 1000}) setLightStencil(0, slot, fixture.session.get());
}

TEST(LightAngles, DirectionsToDegrees) {
  struct Expectation {
    Direction direction;
    int32_t angle;
    int32_t elevation;
  };
  const Expectation expectations[] = {{{0, 0, 1}, -90, 0},       {{1, 0, 0}, 0, 600},
                                      {{-1, 0, 0.5F}, 180, 300}, {{0, -1, 0}, -90, 600},
                                      {{0, 1, -1}, 90, 1200},    {{0.01F, 0.01F, 1}, -90, 0}};
  EffectSettings settings = {};
  for (const Expectation& expected : expectations) {
    settings.light1Dir = expected.direction;
    lightAngles(&settings);
    EXPECT_EQ(settings.light1Angle, expected.angle);
    EXPECT_EQ(settings.light1Elevation, expected.elevation);
  }
}

TEST(ShadingTables, BuiltOncePerSession) {
  SessionFixture fixture;
  ShadingTables& tables = fixture.session->shading;
  buildSessionTables(fixture.session.get());
  EXPECT_EQ(tables.reflectionAngle[100], 421);
  EXPECT_EQ(tables.reflectionAngle[1999], 780);
  tables.reflectionAngle[100] = -1;
  buildSessionTables(fixture.session.get());
  EXPECT_EQ(tables.reflectionAngle[100], -1);
}

TEST(ShadingTables, GreyAndColouredCaustics) {
  SessionFixture fixture;
  fixture.allocate(4, 4);
  buildSessionTables(fixture.session.get());
  const Rgb32* caustic = fixture.session->shading.caustic;
  fixture.settings.iriTableChoice = 1;
  prepareShading(fixture.session.get());
  EXPECT_EQ(caustic[0].red, 0);
  EXPECT_EQ(caustic[46].red, 117);
  EXPECT_EQ(caustic[46].blue, 117);
  EXPECT_EQ(caustic[92].green, 0);
  fixture.settings.iriTableChoice = 0;
  prepareShading(fixture.session.get());
  EXPECT_EQ(caustic[30].green, 168);
  EXPECT_EQ(caustic[46].blue, 0);
}

TEST(ShadingTables, IridescenceByStrength) {
  SessionFixture fixture;
  buildSessionTables(fixture.session.get());
  const Rgb32* film = fixture.session->shading.iridescence;
  fixture.settings.iriColors = 50;
  fixture.settings.iridescence = 50;
  buildIridescenceTable(fixture.session.get());
  const Weights rows[] = {
      {0, 148, 226, 193}, {30, 219, 166, 197}, {60, 176, 214, 184}, {89, 192, 193, 192}};
  for (const Weights& row : rows) {
    EXPECT_EQ(film[row[0]].red, row[1]);
    EXPECT_EQ(film[row[0]].green, row[2]);
    EXPECT_EQ(film[row[0]].blue, row[3]);
  }
  fixture.settings.iridescence = 0;
  buildIridescenceTable(fixture.session.get());
  for (int32_t i = 0; i < kIridescenceEntries; ++i) ASSERT_EQ(film[i].green, 256);
}

// A one-pixel picture over a given cell block, lit with the settings of the fixture.
static std::array<uint8_t, 3> litPixel(SessionFixture* fixture, const Weights& block,
                                       std::array<uint8_t, 3> source) {
  SessionRecord* session = fixture->session.get();
  fixture->allocate(1, 1);
  const EffectSettings& settings = fixture->settings;
  setLightStencil(settings.light1Angle, kLight1Main, session);
  setLightStencil(settings.light1Angle + 315, kLight1Side, session);
  setLightStencil(settings.light2Angle, kLight2Main, session);
  setLightStencil(settings.light2Angle + 315, kLight2Side, session);
  buildSessionTables(session);
  buildIridescenceTable(session);
  prepareShading(session);
  std::fill_n(fieldCells(&session->render), 9, int16_t{0});
  for (int32_t i = 0; i < 4; ++i) {
    fieldRow(&session->render, i / 2)[i % 2] = static_cast<int16_t>(block[i]);
  }
  std::array<uint8_t, 3> out = {};
  fixture->filter.inData = source.data();
  fixture->filter.outData = out.data();
  session->render.currentRow = 0;
  shadeRow(session);
  fixture->filter.inData = fixture->filter.outData = nullptr;
  return out;
}

TEST(ShadeRow, StatedPixels) {
  struct Expectation {
    Weights block;
    int32_t gloss;
    uint8_t source;
    uint8_t result;
  };
  // Black away from the light; beyond white toward it; on level ground a touch darker.
  const Expectation expectations[] = {{{0, 0, 0, 0}, 50, 255, 254},
                                      {{0, 0, 0, 0}, 50, 200, 199},
                                      {{0, 256, 0, 256}, 0, 200, 0},
                                      {{0, -256, 0, -256}, 0, 200, 255}};
  for (const Expectation& expected : expectations) {
    SessionFixture fixture;
    fixture.settings.gloss = expected.gloss;
    const uint8_t s = expected.source;
    const std::array<uint8_t, 3> pixel = litPixel(&fixture, expected.block, {s, s, s});
    for (uint8_t sample : pixel) EXPECT_EQ(sample, expected.result);
  }
  // The highlight: 527 before the limit, shown by subtracting with a darker light.
  SessionFixture fixture;
  fixture.settings.light1Color = {65535 / 4, 65535 / 4, 65535 / 4};
  const std::array<uint8_t, 3> bright = litPixel(&fixture, {0, -47, -47, -94}, {200, 200, 200});
  EXPECT_EQ(bright[0], (200 * 367 * 63 >> 16) + (243 * 63 >> 8));
  fixture.settings.glare = 0;
  const std::array<uint8_t, 3> dull = litPixel(&fixture, {0, -47, -47, -94}, {200, 200, 200});
  EXPECT_EQ(dull[0], 200 * 367 * 63 >> 16);
}

TEST(ShadeRow, MissingHostBuffersAreReported) {
  for (bool in : {true, false}) {
    SessionFixture fixture;
    fixture.allocate(1, 1);
    uint8_t pixel[3] = {1, 2, 3};
    fixture.filter.inData = in ? pixel : nullptr;
    fixture.filter.outData = in ? nullptr : pixel;
    shadeRow(fixture.session.get());
    EXPECT_EQ(fixture.result, -108);
    EXPECT_EQ(pixel[0], 1);
  }
}

TEST(Tarnish, StrengthAndFlatGround) {
  struct Expectation {
    int32_t tarnish;
    int32_t previewScale;
    int32_t strength;
  };
  const Expectation expectations[] = {{50, 1, 256}, {50, 2, 128}, {100, 1, 1280}, {51, 1, 276}};
  for (const Expectation& expected : expectations) {
    SessionFixture fixture;
    fixture.allocate(9, 9);
    RenderState* render = &fixture.session->render;
    fixture.settings.tarnish = expected.tarnish;
    fixture.settings.previewScale = expected.previewScale;
    std::fill_n(fieldCells(render), 11 * 11, int16_t{500});
    render->currentRow = 4;
    computeTarnishRow(fixture.session.get());
    const int32_t* amounts = lineBufferWords(render) + render->tarnishRowStart;
    for (int32_t c = 0; c < 9; ++c) EXPECT_EQ(amounts[c], 0);
    fieldRow(render, 4)[4] += 20;  // a grain: 132 x 20 of curvature
    computeTarnishRow(fixture.session.get());
    EXPECT_EQ(amounts[4], std::min(expected.strength * 132 * 20 >> 12, 256));
    EXPECT_EQ(amounts[2], 0) << "around the grain the ground is hollow";
  }
}

static std::array<uint8_t, 3> composed(const RgbWord& colour, const RgbWord& source,
                                       int32_t blendMode) {
  int16_t weights[256];
  for (int32_t v = 0; v < 256; ++v)
    weights[v] = static_cast<int16_t>(v < 128 ? 2 * v : 511 - 2 * v);
  LitPixel lit = {};
  lit.colour = colour;
  lit.source = source;
  std::array<uint8_t, 3> out = {};
  composePixel(lit, {}, blendMode, weights, /*grey=*/false, out.data());
  return out;
}

TEST(Composition, OverExposureIsSpread) {
  using Samples = std::array<uint8_t, 3>;
  EXPECT_EQ(composed({300, 100, 50}, {}, 1), (Samples{255, 139, 89}));
  EXPECT_EQ(composed({100, 300, 50}, {}, 1), (Samples{179, 255, 129}));
  EXPECT_EQ(composed({100, 50, 300}, {}, 1), (Samples{113, 63, 255}));
  EXPECT_EQ(composed({300, 300, 0}, {}, 1), (Samples{255, 255, 237}));
  EXPECT_EQ(composed({300, 300, 300}, {}, 1), (Samples{255, 255, 255}));
}

TEST(Composition, BlendModes) {
  struct Expectation {
    int32_t mode;
    int32_t o;
    int32_t s;
    uint8_t result;
  };
  const Expectation expectations[] = {{1, 90, 30, 90},
                                      {2, 90, 0, 0},
                                      {2, 200, 127, (254 * 200 + 127) >> 8},
                                      {2, 200, 128, (255 * 200) >> 8},
                                      {3, 200, 200, 255},
                                      {3, 100, 50, 119},
                                      {4, 255, 255, 0},
                                      {4, 255, 0, 254},
                                      {5, 90, 30, 90},
                                      {5, 30, 90, 90},
                                      {6, 90, 30, 30},
                                      {6, 30, 90, 30},
                                      {7, 200, 100, 255},
                                      {8, 100, 200, 0},
                                      {8, 200, 50, 150},
                                      {9, 200, 100, 78},
                                      {10, 200, 100, 221},
                                      {11, 77, 30, 0},
                                      {12, 77, 30, 0},
                                      {0, 77, 30, 77},
                                      {13, 77, 30, 77},
                                      {-5, 77, 30, 77}};
  for (const Expectation& expected : expectations) {
    const std::array<uint8_t, 3> out = composed(
        {expected.o, expected.o, expected.o}, {expected.s, expected.s, expected.s}, expected.mode);
    EXPECT_EQ(out[0], expected.result) << expected.mode << ": " << expected.o << ", " << expected.s;
    EXPECT_EQ(out[2], out[0]);
  }
}
