// Alert texts, places, and the choosers' forms.

#include "services/alerts.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/none/none_script.h"
#include "services/counted_text.h"
#include "services/dialog_placement.h"

static std::string expanded(const std::string& text) {
  char buffer[kAlertTextBytes];
  std::snprintf(buffer, sizeof(buffer), "%s", text.c_str());
  expandAlertText(buffer);
  return buffer;
}

TEST(Alerts, ParametersAreExpanded) {
  setAlertParameters("environment", "gold.bmp", nullptr, "");
  EXPECT_EQ(expanded("Can't open the ^0 file \"^1\"."),
            "Can't open the environment file \"gold.bmp\".");
  EXPECT_EQ(expanded("^2 and ^3 stay, ^4 and ^x too, and ^"),
            "^2 and ^3 stay, ^4 and ^x too, and ^");
  EXPECT_EQ(expanded("^^0"), "^environment");
  EXPECT_EQ(expanded(""), "");
  // Inserted texts are searched from their second character on.
  setAlertParameters("a^1", "^0b", "x", "q");
  EXPECT_EQ(expanded("^0"), "a^0b");
  EXPECT_EQ(expanded("^1"), "^0b");
  setAlertParameters(std::string(400, 'k').c_str(), "", "", "");
  EXPECT_EQ(expanded("^0"), std::string(255, 'k'));
}

TEST(Alerts, EndlessExpansionEnds) {
  setAlertParameters("x^0^0", nullptr, nullptr, nullptr);
  EXPECT_LT(expanded("^0").size(), static_cast<size_t>(kAlertTextBytes));
  setAlertParameters("^0", nullptr, nullptr, nullptr);
  EXPECT_EQ(expanded("^0^0"), "^0^0");
  EXPECT_LT(expanded(std::string(1490, '-') + "^0^0^0").size(), size_t{kAlertTextBytes});
}

TEST(Alerts, KnownByName) {
  resetNone();
  noneScript().alertAnswers = {2};
  setAlertParameters("texture", nullptr, nullptr, nullptr);
  EXPECT_EQ(showAlert("FILE_NOT_FOUND"), 2);
  EXPECT_EQ(noneRecord().alerts[0].texts[0], "Can't open the texture file \"^1\".");
  EXPECT_EQ(showAlert("NOT_ENOUGH_MEMORY"), 1);
  EXPECT_EQ(noneRecord().alerts[1].title, "Not Enough Memory");
  EXPECT_EQ(noneRecord().alerts[1].texts[0],
            "The filter cannot run because it can't get enough RAM (memory). "
            "Try re-selecting the image.");
  EXPECT_EQ(noneRecord().alerts[1].buttons, std::vector<int32_t>{1});
  EXPECT_EQ(showAlert("NO_SUCH_ALERT"), -1);
  showStringAlert(16999);
  ASSERT_EQ(noneRecord().alerts.size(), 3U);
  EXPECT_EQ(noneRecord().alerts[2].title, "Morvalis");
}

TEST(Alerts, DialogsOverTheirParents) {
  DialogSurroundings around = {100, 100, 800, 600, 300, 200, 18, true, 1024, 768};
  EXPECT_EQ(centreDialog(around).x, 332);
  EXPECT_EQ(centreDialog(around).y, 233);
  around.hasSystemMenu = false;
  EXPECT_EQ(centreDialog(around).x, 338);
  around.left = 900;
  EXPECT_EQ(centreDialog(around).x, 1024 - 300);
  around.top = 700;
  EXPECT_EQ(centreDialog(around).y, 768 - 200);
  around.dialogWidth = 2000;
  around.left = -50;
  EXPECT_EQ(centreDialog(around).x, 0);
}

TEST(Alerts, NumbersAsCountedTexts) {
  uint8_t text[kCountedTextBytes];
  for (const auto& [number, digits] :
       {std::pair{0, "0"}, {-100, "-100"}, {INT32_MIN, "-2147483648"}}) {
    numberToText(number, text);
    EXPECT_EQ(text[0], std::strlen(digits));
    EXPECT_STREQ(reinterpret_cast<char*>(text) + 1, digits);
  }
}
