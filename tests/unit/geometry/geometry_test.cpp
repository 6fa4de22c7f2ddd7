// The bevel under values and hosts that the generated renders do not have.

#include <gtest/gtest.h>

#include "geometry/bevel_profiles.h"
#include "geometry/field/cone_kernel.h"
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

TEST(Profiles, ShapesThatAreNoneAreFlat) {
  for (int32_t shape : {0, 14, -1, INT32_MAX}) {
    SessionFixture fixture;
    fixture.settings.shape = shape;
    fixture.settings.height = 100;
    fixture.session->render.effRadius = 50;
    buildProfile(fixture.session.get());
    for (int16_t entry : fixture.session->render.profile) ASSERT_EQ(entry, 0) << shape;
  }
}

TEST(TextureRelief, ScaleFactors) {
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
