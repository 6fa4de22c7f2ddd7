#include "dialog/controls/focus.h"

#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"

// Row by row of each column; what belongs to a row follows it.
const int32_t kTabOrder[kTabStops] = {
    kShapePicker,
    kRadiusSlider,
    11,
    19,
    28,
    12,
    kReflectionSlider,
    52,
    27,
    55,
    42,
    58,
    kCausticToggle,
    kTarnishButton,
    kLight1Button,
    kLight1Pad,
    kLight2Pad,
    kLight2Button,
    kTexturePicker,
    kTextureSample,
    69,
    kEnvironmentButton,
    kSpinButton,
    kBlendPicker,
    kRandomizeButton,
    kLoadButton,
    kSaveButton,
    kCancelButton,
    kOkButton,
    kAutoPreviewToggle,
    kZoomOutButton,
    kZoomButton,
    kZoomInButton,
    kPreviewArea,
};

constexpr int32_t kMarkDistance = 2;  // pixels at 100 percent around the control

static bool isArea(int32_t id) {
  for (int32_t i = 0; i < kMainDialog.controlCount; ++i) {
    const WindowControl& control = kMainDialog.controls[i];
    if (control.id == id) return control.kind == ControlKind::area;
  }
  return false;
}

Rectangle focusMark(int32_t id) {
  // These draw up to their edges.
  if (id == kLight1Pad || id == kLight2Pad || id == kPreviewArea) return controlRect(id);
  const Rectangle rect = controlRect(id == kTextureSample ? kTextureFrame : id);
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  const int32_t distance = kMarkDistance * pen();
  return {side(rect.top - distance), side(rect.left - distance), side(rect.bottom + distance),
          side(rect.right + distance)};
}

// A slider shows that it waits for a number; what else the pointer has pressed needs no mark until
// the keyboard goes on with it.
static bool showsMark(const DialogState* dialog) {
  const int32_t id = dialog->focusedArea;
  return id != 0 && (dialog->focusByKeyboard || findSlider(id) != nullptr);
}

void drawFocusMark(DialogState* dialog) {
  if (showsMark(dialog)) drawFocusFrame(&dialog->canvas, focusMark(dialog->focusedArea));
}

static void moveMark(DialogState* dialog, int32_t id, bool byKeyboard) {
  const int32_t before = dialog->focusedArea;
  const bool showed = showsMark(dialog);
  dialog->focusedArea = id;
  dialog->focusByKeyboard = byKeyboard;
  if (before == id && showed == showsMark(dialog)) return;
  if (showed) repaintArea(dialog, focusMark(before));
  if (showsMark(dialog)) repaintArea(dialog, focusMark(id));
}

void keyboardActs(DialogState* dialog) {
  moveMark(dialog, dialog->focusedArea, /*byKeyboard=*/true);
}

void buttonHasFocus(DialogState* dialog, int32_t id) {
  moveMark(dialog, 0, id == dialog->tabbedTo);
}

static void giveFocus(DialogState* dialog, int32_t id, bool byKeyboard) {
  dialog->focusByKeyboard = byKeyboard;
  dialog->tabbedTo = byKeyboard ? id : 0;
  setFocusedControl(dialog->window, id);
  moveMark(dialog, isArea(id) ? id : 0, byKeyboard);
}

void focusArea(DialogState* dialog, int32_t id) {
  giveFocus(dialog, id, /*byKeyboard=*/false);
}

static int32_t placeOf(int32_t id) {
  for (int32_t i = 0; i < kTabStops; ++i) {
    if (kTabOrder[i] == id) return i;
  }
  return kNoControl;
}

void moveFocusByTab(DialogState* dialog, int32_t focused, bool backwards) {
  const int32_t place = placeOf(focused);
  const int32_t from = place != kNoControl ? place : backwards ? 0 : kTabStops - 1;
  const int32_t step = backwards ? kTabStops - 1 : 1;
  giveFocus(dialog, kTabOrder[(from + step) % kTabStops], /*byKeyboard=*/true);
}
