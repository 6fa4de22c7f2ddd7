#include "dialog/controls/small_controls.h"

#include <algorithm>
#include <cstdio>

#include "dialog/controls/dialog_reading.h"
#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "platform/dialog_text.h"
#include "services/counted_text.h"

constexpr int32_t kThumb = 120;  // bitmaps
constexpr int32_t kDisabledThumb = 241;
// Pixels at 100 percent.
constexpr int32_t kThumbSpace = 13;  // of the track that the thumb needs at its end
constexpr int32_t kThumbHeight = 10;
constexpr int32_t kPointerShift = 4;  // the pointer holds the thumb this far from its left
constexpr int32_t kTextHeight = 14;
constexpr int32_t kToggleWell = 8;  // of a toggle's picture, within the bevel
constexpr int32_t kCaretSpace = 2;
constexpr int32_t kValueGap = 3;  // rows at the bottom of a value area left alone

// Bitmaps of the toggles by state.
constexpr int32_t kAutoPreviewFaces[4] = {237, 238, 234, 236};
constexpr int32_t kCausticFaces[4] = {148, 150, 149, 151};

// At the right of an area of so many pixels at 100 percent, `gap` before its end.
static void drawTextIn(DialogState* dialog, const Rectangle& area, const char* text, int32_t dy,
                       int32_t gap, Rgb8 colour) {
  const Rectangle rect = scaled(area);
  const int32_t height = area.bottom - 2 - area.top;
  const int32_t y = rect.top + scaled(dy + (height - kTextHeight) / 2);
  const int32_t right = rect.right - scaled(gap);
  drawText(&dialog->canvas, text, right - textWidth(text, dialogScale()), y, colour);
}

static void drawControlText(DialogState* dialog, int32_t id, const char* text, int32_t dy,
                            Rgb8 colour) {
  drawTextIn(dialog, tableRect(id), text, dy, /*gap=*/0, colour);
}

void drawLabel(DialogState* dialog, int32_t id) {
  for (int32_t i = 0; i < kLabelCount; ++i) {
    if (kLabels[i].id == id) drawControlText(dialog, id, kLabels[i].text, -2, kBlack);
  }
}

// The radius slider moves at twice the pace above 50; its field shows pixels.
int32_t shownValue(const Slider& slider, int32_t value) {
  return slider.id == kRadiusSlider && value > 50 ? 2 * value - 50 : value;
}

int32_t valueFromShown(const Slider& slider, int32_t shown) {
  return slider.id == kRadiusSlider && shown > 50 ? (shown + 50) / 2 : shown;
}

// The tool tip says the present value, so it is told whenever another one is drawn.
static void tellValue(DialogState* dialog, const Slider& slider) {
  const int32_t value = dialog->controlValue[slider.id];
  if (dialog->tipTold[slider.id] && dialog->toldValue[slider.id] == value) return;
  dialog->tipTold[slider.id] = true;
  dialog->toldValue[slider.id] = value;
  char tip[160];
  std::snprintf(tip, sizeof(tip), "%s %d (%d to %d): %s", slider.name, shownValue(slider, value),
                slider.minimum, shownValue(slider, slider.maximum), slider.meaning);
  setToolTip(dialog->window, slider.id, tip);
  setToolTip(dialog->window, slider.valueArea, tip);
}

// What is typed stands where the number will, with the caret behind it.
static void drawTyped(DialogState* dialog, const Rectangle& ground) {
  fillArea(&dialog->canvas, ground, kWhite);
  const Rectangle area = tableRect(findSlider(dialog->typed.slider)->valueArea);
  drawTextIn(dialog, area, dialog->typed.text, -1, kCaretSpace, kBlack);
  Rectangle caret = ground;
  caret.left = static_cast<int16_t>(ground.right - pen());
  fillArea(&dialog->canvas, caret, kBlack);
}

void drawValue(DialogState* dialog, int32_t id) {
  const Slider* slider = findSlider(id);
  if (slider == nullptr) return;
  Rectangle ground = tableRect(slider->valueArea);
  ground.bottom = static_cast<int16_t>(ground.bottom - kValueGap);
  ground = scaled(ground);
  if (dialog->typed.slider == slider->id) return drawTyped(dialog, ground);
  fillArea(&dialog->canvas, ground, kValueGround);
  uint8_t text[kCountedTextBytes];
  numberToText(shownValue(*slider, dialog->controlValue[slider->id]), text);
  drawControlText(dialog, slider->valueArea, reinterpret_cast<const char*>(text) + 1, -1, kBlack);
  tellValue(dialog, *slider);
  tellIfNews(dialog, slider->id, dialog->controlValue[slider->id]);
}

static int32_t usableWidth(const Rectangle& rect) {
  return rect.right - scaled(kThumbSpace) - (rect.left + scaled(1));
}

static int32_t rangeOf(const DialogState* dialog, int32_t id) {
  return std::max(1, dialog->controlMax[id] - dialog->controlMin[id]);
}

void drawSlider(DialogState* dialog, int32_t id) {
  const Slider* slider = findSlider(id);
  if (slider == nullptr) return;
  const Rectangle rect = controlRect(id);
  drawResource(&dialog->canvas, slider->track, rect.left, rect.top);
  const int32_t along = dialog->controlValue[id] - dialog->controlMin[id];
  const int32_t x = rect.left + scaled(1) + along * (usableWidth(rect) - 1) / rangeOf(dialog, id);
  const int32_t y = rect.top + (rect.bottom - rect.top - scaled(kThumbHeight)) / 2;
  const bool enabled = dialog->session->dialog.controlEnabled[id] == 1;
  drawResource(&dialog->canvas, enabled ? kThumb : kDisabledThumb, x, y);
}

bool pointerStands(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  const bool stands =
      settings->mouse.v == settings->lastMouse.v && settings->mouse.h == settings->lastMouse.h;
  if (stands) pointerHandled(dialog);
  return stands;
}

void pointerHandled(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  settings->lastMouse = settings->mouse;
}

void dragSlider(DialogState* dialog, int32_t id) {
  EffectSettings* settings = settingsOf(dialog);
  settings->mouse.h = static_cast<int16_t>(settings->mouse.h - scaled(kPointerShift));
  if (pointerStands(dialog)) return;
  const Rectangle rect = controlRect(id);
  const int32_t along = settings->mouse.h - (rect.left + scaled(1));
  const int32_t value = dialog->controlMin[id] + along * rangeOf(dialog, id) / usableWidth(rect);
  dialog->controlValue[id] = std::clamp(value, dialog->controlMin[id], dialog->controlMax[id]);
  const Slider* slider = findSlider(id);
  drawSlider(dialog, id);
  drawValue(dialog, id);
  presentArea(dialog, rect);
  presentArea(dialog, controlRect(slider->valueArea));
  pointerHandled(dialog);
}

void drawToggle(DialogState* dialog, int32_t id, int32_t state) {
  const Rectangle rect = controlRect(id);
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  const int32_t width = pen();
  const int32_t left = rect.left - width;
  const int32_t top = rect.top + width;
  const int32_t well = scaled(kToggleWell) + 3 * width - 1;
  const Rectangle outer = {side(top), side(left), side(top + well), side(left + well)};
  const Rectangle inner = {side(top + width), side(left + width), side(top + well - width),
                           side(left + well - width)};
  drawBevel(&dialog->canvas, outer, kDarkBevel, kLightBevel);
  drawBevel(&dialog->canvas, inner, kBlack, kWhite);
  const int32_t* faces = id == kAutoPreviewToggle ? kAutoPreviewFaces : kCausticFaces;
  drawResource(&dialog->canvas, faces[state & 3], left + 2 * width, top + 2 * width);
}

void trackToggle(DialogState* dialog, int32_t id, int32_t currentValue) {
  EffectSettings* settings = settingsOf(dialog);
  const Rectangle rect = controlRect(id);
  dialog->controlValue[id] = pointInRect(settings->mouse, &rect) ? 1 : 0;
  if (pointerStands(dialog)) return;
  drawToggle(dialog, id, (currentValue & 1) + 2 * dialog->controlValue[id]);
  presentArea(dialog, {static_cast<int16_t>(rect.top), static_cast<int16_t>(rect.left - pen()),
                       rect.bottom, rect.right});
  pointerHandled(dialog);
}
