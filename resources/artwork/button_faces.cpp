#include "resources/artwork/button_faces.h"

#include "resources/artwork/drawing/palette.h"
#include "resources/artwork/drawing/small_letters.h"

constexpr int32_t kToggleSide = 10;
constexpr int32_t kToggleWell = 8;  // within the bevel that the dialog draws at left and top

// --- Save and Load --------------------------------------------------------------------------

static void drawTray(Picture* picture) {
  horizontalLine(picture, 1, 12, 13, kInk);
  verticalLine(picture, 1, 9, 14, kInk);
  verticalLine(picture, 11, 9, 14, kInk);
}

// Pixel by pixel where there are few.
static void drawArrow(Picture* picture, bool downward) {
  if (picture->scale == 100) {
    verticalLine(picture, 6, 2, 11, kGold);
    for (int32_t i = 0; i < 4; ++i) {
      horizontalLine(picture, 6 - i, 7 + i, downward ? 10 - i : 2 + i, kGold);
    }
    return;
  }
  const double tip = downward ? 11.2 : 1.8;
  const double base = downward ? 6.6 : 6.4;
  verticalLine(picture, 6, 2, 11, kGold);
  const double middle = (pixelOf(*picture, 6) + penOf(*picture) / 2.0) * 100 / picture->scale;
  fillShape(picture, polygonShape({{middle, tip}, {middle - 4.2, base}, {middle + 4.2, base}}),
            kGold);
}

// Into the tray for Save, out of it for Load.
static Picture drawTrayFace(const char* word, bool downward) {
  Picture picture = newScaledPicture(39, 16, kButtonFace);
  drawTray(&picture);
  drawArrow(&picture, downward);
  drawSmallText(&picture, word, 17, 5, kInk);
  return picture;
}

Picture drawSaveFace() {
  return drawTrayFace("Save", /*downward=*/true);
}

Picture drawLoadFace() {
  return drawTrayFace("Load", /*downward=*/false);
}

// --- Spin and Randomize ---------------------------------------------------------------------

// Three quarters of a turn, clockwise.
Picture drawSpinFace() {
  Picture picture = newScaledPicture(11, 11, kButtonFace);
  const Shape ring = ringShape(5.5, 5.5, 3.2, 4.7);
  fillShape(
      &picture, [&ring](double x, double y) { return ring(x, y) && !(x > 5.5 && y < 5.5); }, kInk);
  fillShape(&picture, polygonShape({{5.2, 0.1}, {9.2, 1.6}, {5.2, 4.1}}), kGold);
  return picture;
}

struct Die {
  double x;  // of the nearest corner, where the three faces meet
  double y;
  double side;
};

static void drawFace(Picture* picture, const Spot& corner, const Spot& along, const Spot& across,
                     Rgb colour, const std::vector<Spot>& pips) {
  const auto at = [&](double u, double v) {
    return Spot{corner.x + along.x * u + across.x * v, corner.y + along.y * u + across.y * v};
  };
  fillShape(picture, polygonShape({at(0, 0), at(1, 0), at(1, 1), at(0, 1)}), colour);
  for (const Spot& pip : pips) {
    const Spot centre = at(pip.x, pip.y);
    fillShape(picture, discShape(centre.x, centre.y, 0.85), kInk);
  }
}

// Seen from above: top face, left face, right face.
static void drawDie(Picture* picture, const Die& die, const std::vector<Spot>& top,
                    const std::vector<Spot>& left, const std::vector<Spot>& right) {
  const Spot corner = {die.x, die.y};
  const Spot toLeft = {-0.87 * die.side, -0.42 * die.side};
  const Spot toRight = {0.87 * die.side, -0.42 * die.side};
  const Spot down = {0, 0.98 * die.side};
  const auto outlineAt = [&](double l, double r, double d) {
    return Spot{corner.x + toLeft.x * l + toRight.x * r,
                corner.y + toLeft.y * l + toRight.y * r + down.y * d};
  };
  const Spot rim[] = {outlineAt(0, 0, 1), outlineAt(1, 0, 1), outlineAt(1, 0, 0),
                      outlineAt(1, 1, 0), outlineAt(0, 1, 0), outlineAt(0, 1, 1)};
  for (size_t i = 0; i < 6; ++i) {
    const Spot& a = rim[i];
    const Spot& b = rim[(i + 1) % 6];
    fillShape(picture, lineShape(a.x, a.y, b.x, b.y, 0.9), kInk);
  }
  drawFace(picture, corner, toLeft, toRight, kPaper, top);
  drawFace(picture, corner, toLeft, down, {236, 226, 200}, left);
  drawFace(picture, corner, toRight, down, {204, 176, 112}, right);
}

Picture drawRandomizeFace() {
  Picture picture = newScaledPicture(36, 19, kButtonFace);
  const std::vector<Spot> one = {{0.5, 0.5}};
  const std::vector<Spot> two = {{0.28, 0.28}, {0.72, 0.72}};
  const std::vector<Spot> three = {{0.22, 0.22}, {0.5, 0.5}, {0.78, 0.78}};
  drawDie(&picture, {11, 8.8, 8.2}, one, two, three);
  drawDie(&picture, {26, 9.6, 8.2}, three, one, two);
  return picture;
}

// --- Toggles --------------------------------------------------------------------------------

// The dialog draws the bevel's left and top; its right and bottom, and the ground beyond, are here.
static Picture drawToggleWell(Rgb ground) {
  Picture picture = newScaledPicture(kToggleSide, kToggleSide, kPanel);
  fillBox(&picture, {0, 0, kToggleWell, kToggleWell}, ground);
  horizontalLine(&picture, 0, kToggleWell + 1, kToggleWell, kPaper);
  verticalLine(&picture, kToggleWell, 0, kToggleWell + 1, kPaper);
  return picture;
}

Picture drawCheckToggle(bool on, bool pressed) {
  Picture picture = drawToggleWell(pressed ? Rgb{206, 204, 199} : kPaper);
  if (on) {
    const Rgb ink = pressed ? kGold : kDarkGold;
    const Shape mark =
        eitherShape(lineShape(1.2, 4.0, 3.2, 6.3, 0.85), lineShape(3.2, 6.3, 6.8, 1.4, 0.85));
    fillShape(&picture, mark, ink);
  }
  return picture;
}

static Rgb rainbowAt(double part) {
  constexpr Rgb kStops[] = {
      {216, 60, 48}, {236, 196, 60}, {84, 180, 84}, {58, 140, 204}, {110, 74, 176}};
  const double at = part * 4;
  const auto index = at >= 4 ? size_t{3} : static_cast<size_t>(at);
  return mixed(kStops[index], kStops[index + 1], at - static_cast<double>(index));
}

Picture drawCausticToggle(bool grey, bool pressed) {
  Picture picture = drawToggleWell(kPaper);
  const int32_t well = pixelOf(picture, kToggleWell);
  for (int32_t x = 0; x < well; ++x) {
    const double part = x / (well - 1.0);
    Rgb colour = grey ? mixed({250, 250, 250}, {76, 76, 76}, part) : rainbowAt(part);
    if (pressed) colour = mixed(colour, kInk, 0.35);
    fillPixels(&picture, {x, 0, x + 1, well}, colour);
  }
  return picture;
}
