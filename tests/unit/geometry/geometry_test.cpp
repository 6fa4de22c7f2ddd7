// Single facts of the bevel: radii, cones, border values, profiles, texture scale.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "geometry/bevel_profiles.h"
#include "geometry/field/cone_kernel.h"
#include "geometry/field/height_field.h"
#include "geometry/render_buffers.h"
#include "geometry/texture_relief.h"
#include "tests/support/hosts/session_fixture.h"

TEST(ConeKernel, EffectiveRadius) {
  struct Expectation {
    int32_t radius;
    uint32_t previewMode;
    int32_t previewScale;
    int32_t effective;
  };
  const Expectation expectations[] = {
      {2, 0, 1, 2},         {10, 0, 1, 10},       {50, 0, 1, 50}, {51, 0, 1, 52},
      {100, 0, 1, 150},     {0, 0, 1, 1},         {-9, 0, 1, 1},  {101, 0, 1, 150},
      {100, 0, 7, 150},     {100, 1, 7, 21},      {10, 1, 20, 1}, {INT32_MAX, 0, 1, 150},
      {INT32_MIN, 1, 3, 1}, {INT32_MAX, 1, 2, 75}};
  SessionFixture fixture;
  for (const Expectation& expected : expectations) {
    fixture.settings.radius = expected.radius;
    fixture.settings.previewMode = expected.previewMode;
    fixture.settings.previewScale = expected.previewScale;
    radiusConstants(fixture.session.get());
    EXPECT_EQ(fixture.session->render.effRadius, expected.effective) << expected.radius;
    EXPECT_EQ(fixture.session->render.kernelStride, 2 * expected.effective + 2);
  }
}

TEST(ConeKernel, CentreAndFirstStep) {
  SessionFixture fixture;
  fixture.allocate(4, 4);
  for (int32_t radius : {2, 10, 50, 100}) {
    fixture.settings.radius = radius;
    radiusConstants(fixture.session.get());
    buildConeKernel(fixture.session.get());
    const RenderState& render = fixture.session->render;
    const auto* cone = static_cast<const int16_t*>(render.coneKernel.address);
    const int16_t* centre = cone + render.effRadius * (render.kernelStride + 1);
    EXPECT_EQ(*centre, 3000);
    EXPECT_EQ(centre[1], render.coneStep);
    EXPECT_EQ(centre[-render.kernelStride], render.coneStep);
  }
}

// Field after stamping and border fill of a selection drawn in text: '.' none, '#' full, '+' half.
static std::vector<int16_t> fieldOf(SessionFixture* fixture, const std::vector<const char*>& rows) {
  std::vector<uint8_t> mask;
  const auto width = static_cast<int16_t>(std::string(rows[0]).size());
  const auto height = static_cast<int16_t>(rows.size());
  for (const char* row : rows) {
    for (int16_t x = 0; x < width; ++x) {
      mask.push_back(row[x] == '#' ? 255 : row[x] == '+' ? 128 : 0);
    }
  }
  fixture->allocate(width, height);
  fixture->filter.haveMask = 1;
  fixture->filter.maskRect = fixture->filter.filterRect;
  fixture->filter.maskData = mask.data();
  fixture->filter.maskRowBytes = width;
  SessionRecord* session = fixture->session.get();
  RenderState* render = &session->render;
  std::fill_n(fieldCells(render), render->fieldStride * render->fieldRows, int16_t{0});
  radiusConstants(session);
  buildConeKernel(session);
  for (render->currentRow = -1; render->currentRow <= height; ++render->currentRow) {
    stampRow(session);
  }
  for (render->currentRow = 0; render->currentRow <= height + 1; ++render->currentRow) {
    fillBorderRow(session);
  }
  fixture->filter.maskData = nullptr;
  const int16_t* cells = fieldCells(render);
  return {cells, cells + render->fieldStride * render->fieldRows};
}

TEST(HeightField, SelectionsInTheSmall) {
  {
    SessionFixture fixture;
    for (int16_t cell : fieldOf(&fixture, {"...", "...", "..."})) EXPECT_EQ(cell, 3000);
    SessionRecord* session = fixture.session.get();
    // Smoothing leaves a level field alone.
    for (int32_t row = 0; row <= 3; ++row) {
      session->render.currentRow = row;
      smoothForwardRow(session);
    }
    for (int32_t row = 3; row >= 0; --row) {
      session->render.currentRow = row;
      smoothBackwardRow(session);
    }
    for (int32_t i = 0; i < 25; ++i) EXPECT_EQ(fieldCells(&session->render)[i], 3000);
  }
  {
    SessionFixture fixture;
    const std::vector<int16_t> cells = fieldOf(&fixture, {"...", ".+.", "..."});
    EXPECT_EQ(cells[2 * 5 + 2], (128 * 2727 + 127 * 3000) >> 8);
    EXPECT_EQ(cells[2 * 5 + 1], 3000);
  }
  {
    // A full pixel among empty ones keeps the largest of four stamps: a cone one pixel away.
    SessionFixture fixture;
    const std::vector<int16_t> cells = fieldOf(&fixture, {"...", ".#.", "..."});
    EXPECT_EQ(cells[2 * 5 + 2], (2727 * 255) >> 8);
  }
}

static std::vector<int16_t> profileOf(int32_t shape, int32_t height, int32_t* depthLow = nullptr) {
  SessionFixture fixture;
  fixture.settings.shape = shape;
  fixture.settings.height = height;
  fixture.session->render.effRadius = 50;  // with height 100 the table is not scaled
  buildProfile(fixture.session.get());
  if (depthLow != nullptr) *depthLow = fixture.session->render.depthLow;
  const int16_t* p = fixture.session->render.profile;
  return {p, p + kProfileEntries};
}

TEST(Profiles, StatedEntries) {
  const std::vector<int16_t> chisel = profileOf(1, 100);
  EXPECT_EQ(chisel[0], 0);
  EXPECT_EQ(chisel[2], 0);
  EXPECT_EQ(chisel[3], 10);
  EXPECT_EQ(chisel[3000], 10000);
  const std::vector<int16_t> step = profileOf(6, 100);
  for (int32_t i = 1011; i <= 1989; ++i) ASSERT_EQ(step[i], 3330);
  EXPECT_EQ(profileOf(11, 100)[3000], 10000);
}

TEST(Profiles, HeightScalesAndNegates) {
  for (int32_t shape = 1; shape <= kShapeCount; ++shape) {
    int32_t low = 1;
    for (int16_t entry : profileOf(shape, 0, &low)) ASSERT_EQ(entry, 0);
    EXPECT_EQ(low, 0);
    int32_t positiveLow = 0;
    int32_t negativeLow = 0;
    const std::vector<int16_t> positive = profileOf(shape, 70, &positiveLow);
    const std::vector<int16_t> negative = profileOf(shape, -70, &negativeLow);
    for (int32_t i = 0; i < kProfileEntries; ++i) ASSERT_EQ(positive[i], -negative[i]);
    EXPECT_EQ(positiveLow, -negativeLow);
  }
  for (int32_t shape : {0, 14, -1, INT32_MAX}) {
    for (int16_t entry : profileOf(shape, 100)) ASSERT_EQ(entry, 0);
  }
}

TEST(TextureRelief, ScaleAndFlatChoice) {
  SessionFixture fixture;
  fixture.allocate(6, 6);
  const std::pair<int32_t, int32_t> scales[] = {{0, 1600}, {55, 110}, {100, 12}, {1000, 1}};
  for (const auto& [setting, factor] : scales) {
    fixture.settings.textureScale = setting;
    buildTextureColumns(fixture.session.get());
    EXPECT_EQ(fixture.session->render.textureScaleFactor, factor);
  }
}

TEST(Geometry, RectanglesOfAnyHost) {
  SessionFixture fixture;
  SessionRecord* session = fixture.session.get();
  setGeometry(session, {10, 10, -5, -5}, 0);
  EXPECT_EQ(session->render.renderWidth, 0);
  EXPECT_EQ(fixture.settings.previewScale, 1);
  setGeometry(session, {-32768, -32768, 32767, 32767}, 1);
  EXPECT_EQ(session->render.renderWidth, 65535);
  computeBufferSizes(session);
  EXPECT_EQ(fixture.filter.bufferSpace, INT32_MAX) << "beyond the host's 32 bits";
}
