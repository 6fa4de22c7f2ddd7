// Where the dialog draws what: every kind of control against its measures, pixel by pixel.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

#include "dialog/controls/control_table.h"
#include "pictures/picture_surface.h"
#include "platform/none/none_script.h"
#include "platform/resource_access.h"
#include "tests/support/dialog/dialog_runs.h"

using Pixel = std::array<int32_t, 3>;

static Pixel grey(int32_t level) {
  return {level, level, level};
}

static Pixel pixelAt(const NonePicture& picture, int32_t x, int32_t y) {
  const uint8_t* pixel = &picture.rgb[3 * (static_cast<size_t>(y) * picture.width + x)];
  return {pixel[0], pixel[1], pixel[2]};
}

static ResourcePicture resource(int32_t id) {
  ResourcePicture picture = {};
  EXPECT_TRUE(findResourcePicture(id, &picture)) << id;
  return picture;
}

static Pixel pixelOf(const ResourcePicture& picture, int32_t x, int32_t y) {
  const uint8_t* pixel = picture.rgb + 3 * (y * picture.width + x);
  return {pixel[0], pixel[1], pixel[2]};
}

// A bitmap stands with its corner there; what lies under `except` does not count.
static void expectBitmap(const NonePicture& shown, int32_t id, int32_t left, int32_t top,
                         const Rectangle& except = {}) {
  const ResourcePicture picture = resource(id);
  for (int32_t y = 0; y < picture.height; ++y) {
    for (int32_t x = 0; x < picture.width; ++x) {
      const Point point = at(left + x, top + y);
      if (pointInRect(point, &except)) continue;
      ASSERT_EQ(pixelAt(shown, left + x, top + y), pixelOf(picture, x, y))
          << "bitmap " << id << " at " << x << "," << y;
    }
  }
}

// The four sides of a one-pixel frame: the two free corners belong to the first colour.
static void expectRing(const NonePicture& shown, int32_t left, int32_t top, int32_t right,
                       int32_t bottom, Pixel first, Pixel second) {
  for (int32_t x = left; x <= right; ++x) {
    ASSERT_EQ(pixelAt(shown, x, top), first) << x << "," << top;
    if (x > left) {
      ASSERT_EQ(pixelAt(shown, x, bottom), second) << x << "," << bottom;
    }
  }
  for (int32_t y = top + 1; y <= bottom; ++y) {
    ASSERT_EQ(pixelAt(shown, left, y), first) << left << "," << y;
    ASSERT_EQ(pixelAt(shown, right, y), second) << right << "," << y;
  }
}

class DialogDrawing : public ::testing::Test {
 protected:
  void SetUp() override {
    resetDialogUser();
  }
  void TearDown() override {
    closeHost();
  }

  static void show(
      const std::function<void(NoneWindow&)>& look, const std::function<void()>& prepare = [] {}) {
    runDialog(displayingHost(), testPicture(40, 30, 3), {}, nullptr, [&] {
      prepare();
      noneScript().modalWindows["DISSOLVESANSPARAM"] = look;
    });
  }
};

TEST_F(DialogDrawing, SlidersAndValues) {
  show([](NoneWindow& window) {
    for (const Slider& slider : kSliders) {
      SCOPED_TRACE(slider.setting);
      const Rectangle rect = controlRect(slider.id);
      const int32_t width = rect.right - 13 - (rect.left + 1);
      for (int32_t wanted : {slider.minimum, -1, 1, 33, 50, 99, slider.maximum}) {
        if (wanted < slider.minimum) continue;
        window.click(sliderPoint(slider.id, wanted));
        const int32_t value = settingOf(slider.setting);
        const int32_t range = slider.maximum - slider.minimum;
        const int32_t x = rect.left + 1 + (value - slider.minimum) * (width - 1) / range;
        const auto side = [](int32_t edge) { return static_cast<int16_t>(edge); };
        const Rectangle thumb = {side(rect.top + 1), side(x), side(rect.top + 11), side(x + 12)};
        expectBitmap(window.pixels(), 120, x, rect.top + 1);
        expectBitmap(window.pixels(), slider.track, rect.left, rect.top, thumb);
      }
      // The field leaves its last three rows to the background.
      const Rectangle field = controlRect(slider.valueArea);
      for (int32_t y = field.top; y < field.bottom; ++y) {
        for (int32_t column = field.left; column < field.right; ++column) {
          const Pixel wanted = y < field.bottom - 3 ? grey(238) : pixelOf(resource(239), column, y);
          ASSERT_EQ(pixelAt(window.pixels(), column, y), wanted) << column << "," << y;
        }
      }
    }
  });
}

static void expectPad(const NonePicture& shown, int32_t id, const Direction& light) {
  const Rectangle rect = controlRect(id);
  const double x = 33 * static_cast<double>(light.x);
  const double y = 33 * static_cast<double>(light.y);
  const auto handleX = rect.left + static_cast<int32_t>(std::trunc(x)) + 42;
  const auto handleY = rect.top + static_cast<int32_t>(std::trunc(y)) + 41;
  const auto footX = rect.left + static_cast<int32_t>(std::trunc((x + 0.5) / 2.9)) + 41;
  const auto footY = rect.top + static_cast<int32_t>(std::trunc((y + 0.5) / 2.9)) + 40;
  const ResourcePicture handle = resource(kIconNumbers + 122);
  const auto covered = [&](int32_t atX, int32_t atY) {
    const int32_t column = atX - (handleX - 2);
    const int32_t row = atY - (handleY - 2);
    return column >= 0 && row >= 0 && column < handle.width && row < handle.height &&
           handle.coverage[row * handle.width + column] != 0;
  };
  for (int32_t row = 0; row < handle.height; ++row) {
    for (int32_t column = 0; column < handle.width; ++column) {
      if (handle.coverage[row * handle.width + column] == 0) continue;
      ASSERT_EQ(pixelAt(shown, handleX - 2 + column, handleY - 2 + row),
                pixelOf(handle, column, row));
    }
  }
  // The line from the foot to the handle: no longer than its longer side, and both ends on it.
  const Pixel line = light.z >= 0 ? Pixel{255, 255, 0} : Pixel{255, 0, 255};
  if (!covered(footX, footY) && (footX != handleX || footY != handleY)) {
    ASSERT_EQ(pixelAt(shown, footX, footY), line) << footX << "," << footY;
  }
  const ResourcePicture pad = resource(id == kLight1Pad ? 218 : 219);
  int32_t drawn = 0;
  for (int32_t row = 0; row < 79; ++row) {
    for (int32_t column = 0; column < 79; ++column) {
      if (covered(rect.left + column, rect.top + row)) continue;
      const Pixel shownPixel = pixelAt(shown, rect.left + column, rect.top + row);
      if (shownPixel == pixelOf(pad, column, row)) continue;
      ASSERT_EQ(shownPixel, line) << column << "," << row;
      ++drawn;
    }
  }
  ASSERT_LE(drawn, std::max(std::abs(handleX - footX), std::abs(handleY - footY)));
}

TEST_F(DialogDrawing, LightPads) {
  show(
      [](NoneWindow& window) {
        for (int32_t step = 0; step < 48; ++step) {
          const double angle = step * 0.1309;
          const double length = 8 + step;
          for (int32_t id : {kLight1Pad, kLight2Pad}) {
            const Rectangle rect = controlRect(id);
            const Point centre = at(rect.left + 43, rect.top + 41);
            window.press(centre);
            window.move(at(centre.h + static_cast<int32_t>(length * std::cos(angle)),
                           centre.v + static_cast<int32_t>(length * std::sin(angle))));
            window.release(centre);
          }
          // The release was at the centre, but a release does not move.
          expectPad(window.pixels(), kLight1Pad, hostSettings()->light1Dir);
          expectPad(window.pixels(), kLight2Pad, hostSettings()->light2Dir);
        }
      },
      [] { hostSettings()->light2Dir.z = -0.1F; });
}

TEST_F(DialogDrawing, ButtonsInEveryState) {
  show(
      [](NoneWindow& window) {
        for (int32_t id : {kOkButton, kLoadButton, kLight2Button}) {
          SCOPED_TRACE(id);
          const Rectangle rect = controlRect(id);
          for (const ItemState& state :
               {ItemState{false, false, false}, ItemState{true, false, false},
                ItemState{false, true, false}, ItemState{true, true, false},
                ItemState{false, false, true}, ItemState{false, true, true}}) {
            window.drawButton(id, state);
            const NonePicture shown = window.pixels();
            int32_t inset = 0;
            const auto ring = [&](Pixel first, Pixel second) {
              expectRing(shown, rect.left + inset, rect.top + inset, rect.right - 1 - inset,
                         rect.bottom - 1 - inset, first, second);
              ++inset;
            };
            if (state.disabled) {
              ring(grey(175), grey(175));
            } else {
              if (state.focused) ring(grey(0), grey(0));
              ring(state.pressed ? grey(0) : grey(240), grey(0));
              ring(state.pressed ? grey(128) : grey(255), grey(128));
            }
            // The ring inside the frame is face, but for a colour, which fills it.
            const bool colour = id == kLight2Button && !state.disabled;
            ring(colour ? Pixel{0x12, 0x34, 0x56} : grey(222),
                 colour ? Pixel{0x12, 0x34, 0x56} : grey(222));
            // The focus is dotted along the text, of a disabled button as well.
            int32_t dots = 0;
            for (int32_t x = rect.left + 4; x < rect.right - 4; ++x) {
              dots += pixelAt(shown, x, rect.top + 4) == grey(222 ^ 255) ? 1 : 0;
            }
            if (id == kOkButton) {
              EXPECT_EQ(dots, state.focused ? (rect.right - rect.left - 8) / 2 : 0);
            }
          }
        }
        const std::set<int32_t> pictures = {kSaveButton, kLoadButton, kSpinButton,
                                            kRandomizeButton};
        for (int32_t id : pictures) {
          const Rectangle rect = controlRect(id);
          const ResourcePicture face = resource(buttonBitmap(id));
          for (bool pressed : {false, true}) {
            window.drawButton(id, {pressed, false, false});
            const int32_t left = rect.left + (rect.right - rect.left + 1 - face.width) / 2;
            const int32_t top = rect.top + (rect.bottom - rect.top + 1 - face.height) / 2;
            expectBitmap(window.pixels(), buttonBitmap(id), left + pressed, top + pressed);
          }
        }
      },
      [] {
        hostSettings()->light2Color = {0x12FF, 0x3400, 0x5601};
      });
}

TEST_F(DialogDrawing, TogglesAndPickers) {
  show([](NoneWindow& window) {
    struct Toggle {
      int32_t id;
      int32_t faces[4];
    };
    for (const Toggle& toggle : {Toggle{kAutoPreviewToggle, {237, 238, 234, 236}},
                                 Toggle{kCausticToggle, {148, 150, 149, 151}}}) {
      const Rectangle rect = controlRect(toggle.id);
      int32_t state = toggle.id == kAutoPreviewToggle ? 1 : 0;
      for (int32_t turn = 0; turn < 2; ++turn) {
        for (bool held : {false, true}) {
          if (held) window.press(middleOf(toggle.id));
          const NonePicture shown = window.pixels();
          expectBitmap(shown, toggle.faces[state + (held ? 2 : 0)], rect.left + 1, rect.top + 3);
          // Of its two frames the left and upper sides stay to be seen.
          for (int32_t x = rect.left - 1; x <= rect.right - 5; ++x) {
            ASSERT_EQ(pixelAt(shown, x, rect.top + 1), grey(128));
          }
          for (int32_t x = rect.left; x <= rect.right - 6; ++x) {
            ASSERT_EQ(pixelAt(shown, x, rect.top + 2), grey(0));
          }
          ASSERT_EQ(pixelAt(shown, rect.left - 1, rect.bottom - 3), grey(128));
          ASSERT_EQ(pixelAt(shown, rect.left, rect.bottom - 4), grey(0));
        }
        window.release(middleOf(toggle.id));
        state ^= 1;
      }
    }
    const int32_t faces[] = {154, 192, 169};  // round, marble, normal
    for (int32_t i = 0; i < kPickerCount; ++i) {
      const Rectangle rect = controlRect(kPickers[i].id);
      const NonePicture shown = window.pixels();
      expectBitmap(shown, faces[i], rect.left + 2, rect.top + 4);
      for (int32_t x = rect.left; x <= rect.right - 2; ++x) {
        ASSERT_EQ(pixelAt(shown, x, rect.top + 2), grey(0));
      }
      for (int32_t x = rect.left + 1; x <= rect.right - 3; ++x) {
        ASSERT_EQ(pixelAt(shown, x, rect.top + 3), grey(255));
      }
      for (int32_t y = rect.top + 5; y <= rect.bottom + 1; ++y) {
        ASSERT_EQ(pixelAt(shown, rect.right - 1, y), grey(0));
      }
      for (int32_t x = rect.left + 3; x < rect.right; ++x) {
        ASSERT_EQ(pixelAt(shown, x, rect.bottom + 1), grey(0));
      }
      EXPECT_EQ(pixelAt(shown, rect.left + 2, rect.bottom + 1),
                pixelOf(resource(239), rect.left + 2, rect.bottom + 1));
    }
  });
}

static void expectTexels(const NonePicture& shown) {
  const EffectSettings* settings = hostSettings();
  for (int32_t y = 0; y < 64; ++y) {
    for (int32_t x = 0; x < 64; ++x) {
      const int32_t column = (settings->textureOffsetX + x) % settings->textureWidth;
      const int32_t row = (settings->textureOffsetY + y) % settings->textureHeight;
      const uint8_t* texel = surfacePixel(settings->texturePicture, column, row);
      ASSERT_EQ(pixelAt(shown, 269 + x, 56 + y), (Pixel{texel[0], texel[1], texel[2]}));
    }
  }
}

TEST_F(DialogDrawing, PictureWindows) {
  show([](NoneWindow& window) {
    expectTexels(window.pixels());
    expectRing(window.pixels(), 267, 54, 333, 120, grey(240), grey(0));
    window.press(at(300, 80));
    window.move(at(450, 20));
    expectTexels(window.pixels());
    window.release(at(450, 20));
    for (bool pressed : {false, true}) {
      window.drawButton(kEnvironmentButton, {pressed, false, false});
      const PictureSurface* sky = hostSettings()->environmentPicture;
      for (int32_t i = 0; i < 64 * 64; ++i) {
        // Pressed, its last row and column lie outside the frame.
        if (pressed && (i % 64 == 63 || i / 64 == 63)) continue;
        const uint8_t* pixel = surfacePixel(sky, i % 64, i / 64);
        ASSERT_EQ(pixelAt(window.pixels(), 270 + i % 64 + pressed, 153 + i / 64 + pressed),
                  (Pixel{pixel[0], pixel[1], pixel[2]}));
      }
      EXPECT_EQ(pixelAt(window.pixels(), 267, 150), grey(pressed ? 0 : 240));
      EXPECT_EQ(pixelAt(window.pixels(), 268, 151), grey(pressed ? 128 : 255));
    }
    for (int32_t y = 150; y < 219; ++y) {
      ASSERT_EQ(pixelAt(window.pixels(), 334, y), pixelOf(resource(239), 334, y));
    }
    // The preview's frame, and white between it and a small picture.
    expectRing(window.pixels(), 372, 10, 667, 296, grey(0), grey(0));
    EXPECT_EQ(pixelAt(window.pixels(), 373, 11), grey(255));
    expectBitmap(window.pixels(), 240, 186, 20);
    expectBitmap(window.pixels(), 122, 270, 239);
  });
}
