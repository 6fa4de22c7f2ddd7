// Which scale a window opens at, and the packs that its pictures come from.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>

#include "dialog/dialog_scale.h"
#include "pictures/sources/scaled_pictures.h"
#include "platform/none/none_script.h"
#include "platform/resource_table.h"

class DialogScale : public ::testing::Test {
 protected:
  void SetUp() override {
    resetNone();
  }
  void TearDown() override {
    unsetenv("MORVALIS_SCALE");
    setDialogScale(kPlainScale);
    forgetScaledPictures();
  }

  static int32_t chosen(const ScreenRoom& room) {
    noneScript().room = room;
    return chooseScale(nullptr, 680, 370, 468);
  }
};

TEST_F(DialogScale, IsTheNearestThatHasRoom) {
  EXPECT_EQ(chosen({100, 0, 0, 0}), 100);
  EXPECT_EQ(chosen({112, 0, 0, 0}), 100);
  EXPECT_EQ(chosen({113, 0, 0, 0}), 125);
  EXPECT_EQ(chosen({192, 0, 0, 0}), 200);
  EXPECT_EQ(chosen({500, 0, 0, 0}), 300);
  EXPECT_EQ(chosen({75, 0, 0, 0}), 100);
  EXPECT_EQ(chosen({200, 1360, 740, 936}), 200);
  EXPECT_EQ(chosen({200, 1359, 740, 936}), 175);
  EXPECT_EQ(chosen({200, 5000, 739, 936}), 175);
  EXPECT_EQ(chosen({200, 1920, 900, 935}), 175) << "the tallest menu";
  EXPECT_EQ(chosen({200, 1904, 936, 1080}), 200) << "a bar below, a frame around";
  EXPECT_EQ(chosen({300, 320, 200, 240}), 100) << "smaller than the smallest";
}

TEST_F(DialogScale, IsWhatTheEnvironmentSays) {
  for (const int32_t scale : kScales) {
    setenv("MORVALIS_SCALE", std::to_string(scale).c_str(), 1);
    EXPECT_EQ(chosen({100, 0, 0, 0}), scale);
  }
  setenv("MORVALIS_SCALE", "300", 1);
  EXPECT_EQ(chosen({100, 1400, 1000, 0}), 200) << "where there is room";
  for (const char* nonsense : {"", "abc", "-200", "0", "99", "301", "200%", "2e2", " 200", "1000",
                               "99999999999999999999", "0x96"}) {
    setenv("MORVALIS_SCALE", nonsense, 1);
    EXPECT_EQ(chosen({150, 0, 0, 0}), 150) << nonsense;
  }
}

// A picture is as large as its place: that of the plain scale, enlarged.
TEST_F(DialogScale, HasEveryPictureAtItsSize) {
  constexpr int32_t kNotShown[] = {204, 205, 206, 207, kIconNumbers + 101};
  constexpr int32_t kCutOut[] = {kIconNumbers + 122, kIconNumbers + 202};
  for (const int32_t scale : kScales) {
    int32_t found = 0;
    for (const EmbeddedPicture& plain : embeddedPictures()) {
      if (std::count(std::begin(kNotShown), std::end(kNotShown), plain.id) != 0) continue;
      ResourcePicture picture = {};
      ASSERT_TRUE(findScaledPicture(plain.id, scale, &picture)) << plain.id << " at " << scale;
      EXPECT_EQ(picture.coverage != nullptr, plain.coverage != nullptr) << plain.id;
      ++found;
      if (std::count(std::begin(kCutOut), std::end(kCutOut), plain.id) != 0) continue;
      EXPECT_EQ(picture.width, scaledLength(plain.width, scale)) << plain.id;
      EXPECT_EQ(picture.height, scaledLength(plain.height, scale)) << plain.id;
    }
    EXPECT_EQ(found, 76);
  }
}
