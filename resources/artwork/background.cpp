#include "resources/artwork/background.h"

#include "resources/artwork/drawing/palette.h"

constexpr int32_t kWidth = 680;
constexpr int32_t kHeight = 370;

// The two grooves that divide the dialog: settings, pictures and commands, preview.
constexpr int32_t kFirstGroove = 259;
constexpr int32_t kSecondGroove = 364;

constexpr Box kLinkBox = {186, 20, 203, 37};
constexpr Box kBlendBox = {270, 239, 290, 258};
constexpr Box kPreview = {371, 9, 669, 298};

// Tops of the eleven slider rows, from Radius to Tarnish.
constexpr int32_t kSliderTops[] = {54, 73, 92, 111, 130, 150, 170, 190, 209, 228, 247};
constexpr int32_t kTrackLeft = 66;
constexpr int32_t kValueLeft = 203;
constexpr int32_t kValueRight = 227;
constexpr int32_t kValueHeight = 10;  // rows that the dialog fills

// Hairlines after geometry, surface light, glass, and film.
constexpr int32_t kGroupLines[] = {107, 166, 205, 243};

static void horizontalGroove(Picture* picture, int32_t left, int32_t right, int32_t y) {
  const int32_t top = pixelOf(*picture, y);
  const int32_t middle = top + penOf(*picture);
  const int32_t first = pixelOf(*picture, left);
  const int32_t last = pixelOf(*picture, right);
  fillPixels(picture, {first, top, last, middle}, kGrooveDark);
  fillPixels(picture, {first, middle, last, middle + penOf(*picture)}, kGrooveLight);
}

static void verticalGroove(Picture* picture, int32_t x, int32_t top, int32_t bottom) {
  const int32_t left = pixelOf(*picture, x);
  const int32_t middle = left + penOf(*picture);
  const int32_t first = pixelOf(*picture, top);
  const int32_t last = pixelOf(*picture, bottom);
  fillPixels(picture, {left, first, middle, last}, kGrooveDark);
  fillPixels(picture, {middle, first, middle + penOf(*picture), last}, kGrooveLight);
}

// A frame around a box, cut into the ground.
static void sunkenFrame(Picture* picture, const Box& box) {
  const Box inner = pixelsOf(*picture, box);
  const int32_t pen = penOf(*picture);
  framePixels(picture, {inner.left - pen, inner.top - pen, inner.right + pen, inner.bottom + pen},
              kGrooveDark, kGrooveLight);
}

static void drawValueFields(Picture* picture) {
  for (const int32_t top : kSliderTops) {
    sunkenFrame(picture, {kValueLeft, top, kValueRight, top + kValueHeight});
  }
  sunkenFrame(picture, {339, 126, 359, 136});
}

// Thin gold lines lead from a value to the small control that belongs to it.
static void drawLeads(Picture* picture) {
  horizontalLine(picture, kValueRight + 2, 233, 194, kGold);
  horizontalLine(picture, kValueRight + 2, 231, 252, kGold);
  horizontalLine(picture, 336, 339, 186, kGold);
  horizontalLine(picture, 291, 299, 248, kGold);
  horizontalLine(picture, 105, kLinkBox.left, 28, kGold);
  horizontalLine(picture, kLinkBox.right, 264, 28, kGold);
  verticalLine(picture, 284, 49, 53, kGold);
}

static void drawPreviewWell(Picture* picture) {
  sunkenFrame(picture, kPreview);
  fillBox(picture, kPreview, {242, 241, 239});
}

Picture drawBackground() {
  Picture picture = newScaledPicture(kWidth, kHeight, kPanel);
  fillBox(&picture, {kFirstGroove, 0, kSecondGroove, kHeight}, kDeepPanel);
  horizontalLine(&picture, 0, kWidth, 0, kGrooveLight);
  verticalGroove(&picture, kFirstGroove, 1, kHeight);
  verticalGroove(&picture, kSecondGroove, 1, kHeight);

  horizontalGroove(&picture, 8, 252, 49);
  horizontalGroove(&picture, 8, 252, 271);
  for (const int32_t y : kGroupLines) {
    horizontalLine(&picture, kTrackLeft, kValueRight, y, mixed(kPanel, kGrooveDark, 0.55));
  }
  horizontalGroove(&picture, 267, 358, 143);
  horizontalGroove(&picture, 267, 358, 222);
  horizontalGroove(&picture, 267, 358, 269);
  horizontalGroove(&picture, 371, 669, 327);

  drawValueFields(&picture);
  drawPreviewWell(&picture);
  drawLeads(&picture);
  return picture;
}

// The shape and the texture add up: a summing point on the line that joins their pickers.
Picture drawTextureLink(const Picture& background) {
  Picture picture = croppedPicture(background, kLinkBox);
  horizontalLine(&picture, 0, kLinkBox.right - kLinkBox.left, 8, kGold);
  fillShape(&picture, discShape(8.5, 8.5, 7.5), kGold);
  fillShape(&picture, discShape(8.5, 8.5, 6.5), kGrooveLight);
  horizontalLine(&picture, 5, 12, 8, kInk);
  verticalLine(&picture, 8, 5, 12, kInk);
  return picture;
}

// Effect over picture: two discs, and what they give together.
Picture drawBlendSymbol(const Picture& background) {
  Picture picture = croppedPicture(background, kBlendBox);
  const Shape below = discShape(7, 9.5, 5.5);
  const Shape above = discShape(12.5, 9.5, 5.5);
  fillShape(&picture, below, mixed(kSteel, kPaper, 0.25));
  fillShape(&picture, above, kLightGold);
  fillShape(&picture, bothShape(below, above), kGold);
  fillShape(&picture, ringShape(7, 9.5, 5.2, 6.2), kSoftInk);
  fillShape(&picture, ringShape(12.5, 9.5, 5.2, 6.2), kDarkGold);
  return picture;
}
