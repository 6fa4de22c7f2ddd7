#include "dialog/controls/buttons.h"

#include <cstdio>

#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "pictures/sources/scaled_pictures.h"
#include "platform/dialog_text.h"

// Pixels at 100 percent.
constexpr int32_t kFocusInset = 4;
constexpr int32_t kTextHeight = 16;

static Rectangle inset(const Rectangle& rect, int32_t by) {
  return {static_cast<int16_t>(rect.top + by), static_cast<int16_t>(rect.left + by),
          static_cast<int16_t>(rect.bottom - by), static_cast<int16_t>(rect.right - by)};
}

// The last pixels themselves in place of the excluded sides.
static Rectangle sidesOf(const Rectangle& rect) {
  return {rect.top, rect.left, static_cast<int16_t>(rect.bottom - 1),
          static_cast<int16_t>(rect.right - 1)};
}

static void fillSides(Canvas* canvas, const Rectangle& sides, Rgb8 colour) {
  fillArea(canvas,
           {sides.top, sides.left, static_cast<int16_t>(sides.bottom + 1),
            static_cast<int16_t>(sides.right + 1)},
           colour);
}

void drawButtonFrame(Canvas* canvas, const Rectangle& rect, const ItemState& state) {
  Rectangle sides = sidesOf(rect);
  if (state.disabled) {
    drawBevel(canvas, sides, kDisabledText, kDisabledText);
    return fillSides(canvas, inset(sides, pen()), kButtonFace);
  }
  if (state.focused) {
    drawBevel(canvas, sides, kBlack, kBlack);
    sides = inset(sides, pen());
  }
  const bool pressed = state.pressed;
  drawBevel(canvas, sides, pressed ? kBlack : kLightBevel, kBlack);
  sides = inset(sides, pen());
  drawBevel(canvas, sides, pressed ? kDarkBevel : kWhite, kDarkBevel);
  fillSides(canvas, inset(sides, pen()), kButtonFace);
}

static void drawFocus(Canvas* canvas, const Rectangle& rect, const ItemState& state) {
  if (state.focused) drawFocusFrame(canvas, inset(rect, scaled(kFocusInset)));
}

static void drawCentredText(Canvas* canvas, int32_t id, const char* text, bool pressed,
                            Rgb8 colour) {
  const Rectangle area = tableRect(id);
  const Rectangle rect = scaled(area);
  const int32_t shift = pressed ? pen() : 0;
  const int32_t height = area.bottom - area.top;
  const int32_t width = textWidth(text, dialogScale());
  const int32_t x = rect.left + shift + pen() + (rect.right - rect.left - width) / 2;
  const int32_t y = rect.top + shift + scaled((height - kTextHeight) / 2 + 2 - 1);
  drawText(canvas, text, x, y, colour);
}

void drawTextButton(DialogState* dialog, int32_t id, const char* text, const ItemState& state) {
  const Rectangle rect = controlRect(id);
  ItemState shown = state;
  shown.disabled |= dialog->session->dialog.controlEnabled[id] != 1;
  drawButtonFrame(&dialog->canvas, rect, shown);
  drawCentredText(&dialog->canvas, id, text, shown.pressed,
                  shown.disabled ? kDisabledText : kBlack);
  drawFocus(&dialog->canvas, rect, shown);
}

void drawPictureButton(DialogState* dialog, int32_t id, const ItemState& state) {
  const Rectangle rect = controlRect(id);
  drawButtonFrame(&dialog->canvas, rect, state);
  ResourcePicture picture;
  if (findScaledPicture(buttonBitmap(id), dialogScale(), &picture)) {
    const int32_t shift = state.pressed ? pen() : 0;
    const int32_t x = rect.left + (rect.right - rect.left + 1 - picture.width) / 2 + shift;
    const int32_t y = rect.top + (rect.bottom - rect.top + 1 - picture.height) / 2 + shift;
    drawResource(&dialog->canvas, buttonBitmap(id), x, y);
  }
  drawFocus(&dialog->canvas, rect, state);
}

void drawColourButton(DialogState* dialog, int32_t id, const Color16& colour,
                      const ItemState& state) {
  const Rectangle rect = controlRect(id);
  drawButtonFrame(&dialog->canvas, rect, state);
  const Rgb8 shown = {static_cast<uint8_t>(colour.red >> 8),
                      static_cast<uint8_t>(colour.green >> 8),
                      static_cast<uint8_t>(colour.blue >> 8)};
  fillSides(&dialog->canvas, inset(sidesOf(rect), (state.focused ? 3 : 2) * pen()), shown);
  drawFocus(&dialog->canvas, rect, state);
}

void drawZoomPercentage(DialogState* dialog, const ItemState& state) {
  const Rectangle rect = controlRect(kZoomButton);
  fillArea(&dialog->canvas, rect, kButtonFace);
  const int32_t scale = settingsOf(dialog)->previewScale;
  char text[16];
  std::snprintf(text, sizeof(text), "%d%%", 100 / (scale < 1 ? 1 : scale));
  drawCentredText(&dialog->canvas, kZoomButton, text, /*pressed=*/false, kBlack);
  if (state.focused) drawFocusFrame(&dialog->canvas, rect);
}
