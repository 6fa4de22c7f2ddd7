#include "resources/artwork/icons_and_cursors.h"

#include "resources/artwork/drawing/drawn_letters.h"
#include "resources/artwork/drawing/palette.h"
#include "resources/artwork/engine_runs.h"

constexpr int32_t kIconSide = 32;
// The module icon before it is reduced: a side that its own divides.
constexpr int32_t kLarge = 192;
constexpr int32_t kHuge = 1024;  // for icons from 128 pixels on
constexpr Rgb kOutline = {28, 26, 22};

// Not every system mixes the edge of an icon with what is under it: all or nothing at 100 percent,
// which is the system's to draw.
static void hardenEdges(Picture* picture) {
  if (picture->scale != 100) return;
  for (uint8_t& alpha : picture->alpha) alpha = alpha >= 128 ? 255 : 0;
}

// --- Module icon ----------------------------------------------------------------------------

static Shape plateShape(double side) {
  return roundedBoxShape(side * 0.02, side * 0.02, side * 0.98, side * 0.98, side * 0.2);
}

// A gold initial on a graphite plate, both bevelled by the effect.
static Picture drawPlate(int32_t side) {
  Picture picture = newPicture(side, side, kGraphite);
  EffectSettings plate = smoothSettings();
  plate.radius = radiusFor(14 * side / kLarge);
  plate.height = 50;
  plate.gloss = 40;
  raiseObject(&picture, coverageOf(plateShape(side), side, side, 2), kGraphite, plate);
  EffectSettings gold = goldSettings();
  gold.radius = radiusFor(12 * side / kLarge);
  gold.height = 80;
  gold.reflection = 50;
  const double size = side * 0.40;
  const Shape initial = wordShape("M", (side - wordWidth("M", size)) / 2, side * 0.80, size);
  raiseObject(&picture, coverageOf(initial, side, side, 2), {222, 172, 74}, gold);
  return picture;
}

Picture drawModuleIcon(int32_t side) {
  const int32_t plate = side < 128 ? kLarge : kHuge;
  const Picture small = reducedPicture(drawPlate(plate), plate / side);
  Picture icon = newTransparentPicture(side, side);
  fillShape(&icon, plateShape(side), [&small](double x, double y) {
    return pixelAt(small, static_cast<int32_t>(x), static_cast<int32_t>(y));
  });
  return icon;
}

// --- Alert and check mark -------------------------------------------------------------------

static Shape roundedTriangle(double grown) {
  const Spot a = {16, 5.2};
  const Spot b = {4.8, 26};
  const Spot c = {27.2, 26};
  const double reach = 2.2 + grown;
  return eitherShape(polygonShape({a, b, c}),
                     eitherShape(lineShape(a.x, a.y, b.x, b.y, reach),
                                 eitherShape(lineShape(b.x, b.y, c.x, c.y, reach),
                                             lineShape(c.x, c.y, a.x, a.y, reach))));
}

Picture drawAlertIcon() {
  Picture picture = newScaledTransparentPicture(kIconSide, kIconSide);
  fillShape(&picture, roundedTriangle(1.2), kDarkGold);
  hardenEdges(&picture);
  fillShape(&picture, roundedTriangle(0), [](double, double y) {
    return mixed({250, 222, 140}, {214, 160, 44}, y / kIconSide);
  });
  fillShape(&picture, polygonShape({{14.2, 10}, {17.8, 10}, {17.1, 20}, {14.9, 20}}), kOutline);
  fillShape(&picture, discShape(16, 23.4, 1.75), kOutline);
  return picture;
}

static Picture drawPlainCheckMark() {
  // Dark with a white edge below: it shows on the menu's grey and on any highlight.
  constexpr const char* kRows[] = {"......oo.", ".....oo..", "o...oo...",
                                   "oo.oo....", ".ooo.....", "..o......"};
  Picture picture = newTransparentPicture(kIconSide, kIconSide);
  for (int32_t pass = 0; pass < 2; ++pass) {
    for (int32_t y = 0; y < 6; ++y) {
      for (int32_t x = 0; x < 9; ++x) {
        if (kRows[y][x] != 'o') continue;
        if (pass == 0) {
          setPixel(&picture, x, y + 1, kPaper);
        } else {
          setPixel(&picture, x, y, kOutline);
        }
      }
    }
  }
  return picture;
}

Picture drawCheckMark() {
  if (drawnScale() == 100) return drawPlainCheckMark();
  Picture picture = newScaledTransparentPicture(9, 8);
  const auto mark = [](double down) {
    return eitherShape(lineShape(1.2, 3.2 + down, 3.3, 5.2 + down, 0.95),
                       lineShape(3.3, 5.2 + down, 7.4, 0.9 + down, 0.95));
  };
  fillShape(&picture, mark(1), kPaper);
  fillShape(&picture, mark(0), kOutline);
  return picture;
}

// --- Hands ----------------------------------------------------------------------------------

struct Finger {
  double rootX;
  double rootY;
  double tipX;
  double tipY;
};

constexpr double kFingerHalf = 1.25;
constexpr double kRim = 0.95;

static void drawFinger(Picture* picture, const Finger& finger) {
  fillShape(picture,
            lineShape(finger.rootX, finger.rootY, finger.tipX, finger.tipY, kFingerHalf + kRim),
            kOutline);
  fillShape(picture, lineShape(finger.rootX, finger.rootY, finger.tipX, finger.tipY, kFingerHalf),
            kPaper);
}

static void drawPalm(Picture* picture, const Shape& palm, const Shape& rim) {
  fillShape(picture, rim, kOutline);
  fillShape(picture, palm, kPaper);
}

Picture drawOpenHand() {
  Picture picture = newScaledTransparentPicture(kIconSide, kIconSide);
  const Finger thumb = {4.6, 12.2, 2.2, 8.6};
  const Finger fingers[] = {
      {5.2, 9.0, 4.0, 3.8}, {7.9, 8.0, 7.4, 2.2}, {10.6, 8.2, 11.0, 2.8}, {13.0, 9.6, 14.2, 5.4}};
  const Shape rim = eitherShape(roundedBoxShape(3.2, 6.8, 15.2, 15.4, 4.2),
                                roundedBoxShape(5.0, 10.0, 13.6, 17.2, 2.0));
  const Shape palm = eitherShape(roundedBoxShape(4.2, 7.8, 14.2, 14.5, 3.4),
                                 roundedBoxShape(6.0, 10.0, 12.6, 16.2, 1.2));
  drawPalm(&picture, palm, rim);
  drawFinger(&picture, thumb);
  for (const Finger& finger : fingers) drawFinger(&picture, finger);
  fillShape(&picture, palm, kPaper);
  return picture;
}

Picture drawClosedHand() {
  Picture picture = newScaledTransparentPicture(kIconSide, kIconSide);
  const Shape rim = eitherShape(roundedBoxShape(2.6, 6.0, 15.2, 14.6, 4.2),
                                roundedBoxShape(5.0, 10.0, 13.6, 17.2, 2.0));
  const Shape palm = eitherShape(roundedBoxShape(3.6, 7.0, 14.2, 13.7, 3.4),
                                 roundedBoxShape(6.0, 10.0, 12.6, 16.2, 1.2));
  drawPalm(&picture, palm, rim);
  const Finger knuckles[] = {
      {5.0, 8.4, 4.8, 6.6}, {7.8, 8.2, 7.7, 5.8}, {10.6, 8.2, 10.6, 5.9}, {13.2, 8.6, 13.3, 6.9}};
  for (const Finger& knuckle : knuckles) drawFinger(&picture, knuckle);
  fillShape(&picture, bothShape(palm, [](double, double y) { return y > 9.6; }), kPaper);
  return picture;
}
