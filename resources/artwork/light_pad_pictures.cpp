#include "resources/artwork/light_pad_pictures.h"

#include <cmath>

#include "resources/artwork/drawing/palette.h"
#include "resources/artwork/drawing/small_letters.h"

constexpr int32_t kPadSide = 85;
// The handle's pixel for a light from straight ahead, and how far it goes.
constexpr double kMiddleX = 42.5;
constexpr double kMiddleY = 41.5;
constexpr double kReach = 33;
constexpr double kFaceRadius = 36.5;

static void drawTick(Picture* picture, double turns, double inner, double outer, double halfWidth,
                     Rgb colour) {
  const double x = cosineOfTurn(turns);
  const double y = sineOfTurn(turns);
  fillShape(picture,
            lineShape(kMiddleX + inner * x, kMiddleY + inner * y, kMiddleX + outer * x,
                      kMiddleY + outer * y, halfWidth),
            colour);
}

static void drawCompass(Picture* picture, int32_t light) {
  constexpr int32_t kTicks = 24;
  for (int32_t i = 0; i < kTicks; ++i) {
    const bool quarter = i % 6 == 0;
    const bool eighth = i % 3 == 0;
    drawTick(picture, static_cast<double>(i) / kTicks, 38.2,
             quarter  ? 40.6
             : eighth ? 40.2
                      : 39.4,
             quarter ? 0.75 : 0.45, quarter ? (light == 1 ? kGold : kInk) : kSoftInk);
  }
}

// A shallow dark bowl, so that the handle's line stands out in any direction.
static void drawFace(Picture* picture) {
  fillShape(picture, discShape(kMiddleX, kMiddleY, kFaceRadius + 1), kGrooveDark);
  fillShape(picture, discShape(kMiddleX + 0.35, kMiddleY + 0.35, kFaceRadius + 0.6), kGrooveLight);
  fillShape(picture, discShape(kMiddleX, kMiddleY, kFaceRadius), [](double x, double y) {
    const double toLight = (x - kMiddleX + y - kMiddleY) / (2 * kFaceRadius);
    const double dx = x - kMiddleX;
    const double dy = y - kMiddleY;
    const double away = std::sqrt(dx * dx + dy * dy) / kFaceRadius;
    return mixed({70, 70, 74}, {106, 105, 104}, 0.5 + 0.42 * toLight - 0.22 * away * away);
  });
}

static void drawRings(Picture* picture, int32_t light) {
  const Rgb line = {132, 130, 126};
  fillShape(picture, ringShape(kMiddleX, kMiddleY, kReach - 0.3, kReach + 0.3), line);
  fillShape(picture, ringShape(kMiddleX, kMiddleY, kReach / 2 - 0.3, kReach / 2 + 0.3),
            mixed(line, kGraphite, 0.35));
  for (int32_t quarter = 0; quarter < 4; ++quarter) {
    drawTick(picture, quarter / 4.0, 13.5, 19.5, 0.35, mixed(line, kGraphite, 0.2));
  }
  // One mark in the middle for the first light, a pair for the second.
  if (light == 1) {
    fillShape(picture, discShape(kMiddleX, kMiddleY, 1.3), line);
  } else {
    fillShape(picture, ringShape(kMiddleX, kMiddleY, 2.2, 3.0), line);
    fillShape(picture, discShape(kMiddleX, kMiddleY, 0.9), line);
  }
}

// The number stands in the corner next to the light's colour button.
static void drawNumber(Picture* picture, int32_t light) {
  const int32_t x = light == 1 ? 4 : 78;
  drawSmallText(picture, light == 1 ? "1" : "2", x, 75, kInk);
}

Picture drawLightPad(int32_t light) {
  Picture picture = newScaledPicture(kPadSide, kPadSide, kPanel);
  drawFace(&picture);
  drawCompass(&picture, light);
  drawRings(&picture, light);
  drawNumber(&picture, light);
  return picture;
}

// A bead with a dark rim. Where it is few pixels wide no part of one is transparent, as not every
// system mixes them.
static Picture drawPlainHandle() {
  constexpr const char* kRows[] = {".ooo.", "ohggo", "oggdo", "ogddo", ".ooo."};
  Picture picture = newTransparentPicture(32, 32);
  for (int32_t y = 0; y < 5; ++y) {
    for (int32_t x = 0; x < 5; ++x) {
      switch (kRows[y][x]) {
        case 'o':
          setPixel(&picture, x, y, {20, 18, 14});
          break;
        case 'h':
          setPixel(&picture, x, y, kPaper);
          break;
        case 'g':
          setPixel(&picture, x, y, kLightGold);
          break;
        case 'd':
          setPixel(&picture, x, y, kGold);
          break;
        default:
          break;
      }
    }
  }
  return picture;
}

Picture drawLightHandle() {
  if (drawnScale() == 100) return drawPlainHandle();
  Picture picture = newScaledTransparentPicture(5, 5);
  fillShape(&picture, discShape(2.5, 2.5, 2.5), {20, 18, 14});
  fillShape(&picture, discShape(2.5, 2.5, 1.65),
            [](double x, double y) { return mixed(kLightGold, kGold, (x + y - 3) / 3); });
  fillShape(&picture, discShape(1.9, 1.9, 0.6), kPaper);
  return picture;
}
