// The light under values and hosts that the generated renders do not have.

#include <gtest/gtest.h>

#include "shading/compose_pixel.h"
#include "shading/light_stencils.h"
#include "shading/shade_row.h"
#include "shading/spectral_tables.h"
#include "tests/support/hosts/session_fixture.h"

TEST(LightStencils, DamagedAnglesAndSlotsStayWithinTheTable) {
  SessionFixture fixture;
  setLightStencil(INT32_MIN, kLight1Main, fixture.session.get());
  for (int32_t slot : {-1, 6, 1000}) setLightStencil(0, slot, fixture.session.get());
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

TEST(Composition, ModesThatAreNoneGiveTheColour) {
  int16_t weights[256] = {};
  LitPixel lit = {};
  lit.colour = {77, 77, 77};
  lit.source = {30, 30, 30};
  for (int32_t mode : {0, 13, -5}) {
    uint8_t out[3] = {};
    composePixel(lit, {}, mode, weights, /*grey=*/false, out);
    EXPECT_EQ(out[0], 77) << mode;
  }
}
