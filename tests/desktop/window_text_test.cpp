// What the dialog writes, and where: each text is drawn once more by itself and compared.

#include <gtest/gtest.h>

#include "dialog/controls/control_table.h"
#include "platform/dialog_text.h"
#include "tests/support/dialog/dialog_runs.h"

// A text in black on a plain ground, with its upper left corner there.
static void expectText(const WindowPicture& shown, const std::string& text, int32_t left,
                       int32_t top, int32_t ground) {
  SCOPED_TRACE(text);
  const int32_t width = textWidth(text.c_str(), 100);
  std::vector<uint8_t> coverage(static_cast<size_t>(width) * kTextLineHeight);
  drawTextCoverage(text.c_str(), 100, coverage.data());
  int32_t ink = 0;
  for (int32_t i = 0; i < width * kTextLineHeight; ++i) {
    if (coverage[i] == 0) continue;
    ++ink;
    const int32_t x = left + i % width;
    const int32_t y = top + i / width;
    const int32_t wanted = (ground * (255 - coverage[i]) + 127) / 255;
    ASSERT_EQ(shown.rgb[static_cast<size_t>(3 * (y * shown.width + x))], wanted) << x << "," << y;
  }
  EXPECT_GT(ink, 3);
}

// Ends at the right edge of its field.
static void expectValue(DialogUser& user, int32_t slider, const std::string& text) {
  const Rectangle field = controlRect(findSlider(slider)->valueArea);
  // A field of 13 rows, two of them left out: (11 - 14) / 2 - 1.
  expectText(user.pixels(), text, field.right - textWidth(text.c_str(), 100), field.top - 2, 238);
}

static void expectInButton(DialogUser& user, int32_t id, const std::string& text) {
  const Rectangle rect = controlRect(id);
  const int32_t width = rect.right - rect.left;
  const int32_t left = rect.left + 1 + (width - textWidth(text.c_str(), 100)) / 2;
  const int32_t top = rect.top + (rect.bottom - rect.top - 16) / 2 + 1;
  expectText(user.pixels(), text, left, top, 222);
}

TEST(QtDialogTexts, ValuesAndPercentages) {
  resetDialogUser();
  runDialog(displayingHost(), testPicture(2000, 60, 3), {}, [](DialogUser& user) {
    for (const auto& [slider, value, text] :
         {std::tuple{kRadiusSlider, 50, "50"}, std::tuple{kRadiusSlider, 51, "52"},
          std::tuple{kRadiusSlider, 100, "150"}, std::tuple{11, -100, "-100"},
          std::tuple{11, 7, "7"}, std::tuple{69, 100, "100"}}) {
      user.click(sliderPoint(slider, value));
      expectValue(user, slider, text);
    }
    expectInButton(user, kZoomButton, "14%");
    for (const char* percent : {"16%", "20%", "25%", "33%", "50%", "100%"}) {
      user.clickButton(kZoomInButton);
      expectInButton(user, kZoomButton, percent);
    }
    expectInButton(user, kOkButton, "OK");
    expectInButton(user, kCancelButton, "Cancel");
    user.escape();
  });
  closeHost();
}

// Every text fits its area; letters are whole pixels, so at some scales a line is a little wider.
TEST(QtDialogTexts, LabelsFit) {
  for (const int32_t scale : kScales) {
    const int32_t more = scale == kPlainScale ? 0 : scaledLength(2, scale);
    for (int32_t i = 0; i < kLabelCount; ++i) {
      const Rectangle rect = scaledRect(tableRect(kLabels[i].id), scale);
      EXPECT_LE(textWidth(kLabels[i].text, scale), rect.right - rect.left + more)
          << kLabels[i].text;
    }
    for (const Slider& slider : kSliders) {
      const Rectangle field = scaledRect(tableRect(slider.valueArea), scale);
      EXPECT_LE(textWidth(slider.minimum < 0 ? "-100" : "150", scale), field.right - field.left);
    }
  }
}
