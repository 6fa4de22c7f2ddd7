#include "dialog/dialog_extras.h"

#include <algorithm>
#include <cstdint>

#include "dialog/command_text.h"
#include "dialog/dialog_controls.h"
#include "dialog/dialog_state.h"
#include "dialog/preview_area.h"
#include "dialog/small_controls.h"
#include "dialog/undo.h"
#include "settings/setting_ranges.h"

constexpr int32_t kLargeStep = 10;
constexpr int32_t kMostDigits = 4;

static int32_t sliderUnder(Point point) {
  for (const Slider& slider : kSliders) {
    const Rectangle rect = controlRect(slider.id);
    if (pointInRect(point, &rect)) return slider.id;
  }
  return kNoControl;
}

static void setSlider(DialogState* dialog, int32_t id, int32_t value) {
  const int32_t limited = std::clamp(value, dialog->controlMin[id], dialog->controlMax[id]);
  if (dialog->controlValue[id] == limited) return;
  dialog->controlValue[id] = limited;
  repaintControl(dialog, id);
  repaintControl(dialog, findSlider(id)->valueArea);
  refreshPreview(dialog);
}

static bool stepSlider(DialogState* dialog, int32_t id, int32_t steps, bool large) {
  if (id == kNoControl || findSlider(id) == nullptr) return false;
  dialog->typed = {};
  setSlider(dialog, id, dialog->controlValue[id] + steps * (large ? kLargeStep : 1));
  return true;
}

// --- Typed numbers --------------------------------------------------------------------------

static bool typeCharacter(DialogState* dialog, int32_t id, char character) {
  TypedNumber* typed = &dialog->typed;
  if (typed->slider != id) *typed = {id, 0, false, 0};
  if (character == '-' && typed->digits == 0) {
    typed->negative = true;
    return true;
  }
  if (character < '0' || character > '9' || typed->digits == kMostDigits) return false;
  typed->value = typed->value * 10 + (character - '0');
  ++typed->digits;
  return true;
}

// The radius field shows pixels, at twice the slider's pace above 50.
static int32_t sliderValueOf(int32_t id, int32_t shown) {
  return id == kRadiusSlider && shown > 50 ? (shown + 50) / 2 : shown;
}

static bool finishTyping(DialogState* dialog) {
  const TypedNumber typed = dialog->typed;
  dialog->typed = {};
  if (typed.digits == 0) return false;
  setSlider(dialog, typed.slider,
            sliderValueOf(typed.slider, typed.negative ? -typed.value : typed.value));
  return true;
}

// --- Keys -----------------------------------------------------------------------------------

static void showHistoryStep(DialogState* dialog) {
  loadControls(dialog, /*redrawPictures=*/true);
  repaintControl(dialog, kAutoPreviewToggle);
  if (settingsOf(dialog)->autoPreview == 1) renderPreview(dialog);
}

static void copyCommand(DialogState* dialog) {
  char command[kCommandTextBytes];
  readControls(dialog);
  writeCommandText(settingsOf(dialog), command);
  copyTextToClipboard(command);
}

static bool handleKey(DialogState* dialog, const WindowEvent& event) {
  const int32_t id = event.id != 0 ? event.id : dialog->wheelControl;
  const bool slider = id != kNoControl && findSlider(id) != nullptr;
  switch (event.key) {
    case WindowKey::left:
    case WindowKey::down:
      return slider && stepSlider(dialog, id, -1, event.shift);
    case WindowKey::right:
    case WindowKey::up:
      return slider && stepSlider(dialog, id, 1, event.shift);
    case WindowKey::character:
      return slider && typeCharacter(dialog, id, event.character);
    case WindowKey::enter:
      return finishTyping(dialog);
    case WindowKey::backspace:
      dialog->typed.value /= 10;
      dialog->typed.digits = std::max(dialog->typed.digits - 1, 0);
      return slider;
    case WindowKey::undo:
      if (undoChange(dialog)) showHistoryStep(dialog);
      return true;
    case WindowKey::redo:
      if (redoChange(dialog)) showHistoryStep(dialog);
      return true;
    case WindowKey::copy:
      copyCommand(dialog);
      return true;
    default:
      return false;
  }
}

static bool restoreDefault(DialogState* dialog, Point point) {
  const int32_t id = sliderUnder(point);
  if (id == kNoControl) return false;
  const SettingRange* range = findSetting(findSlider(id)->setting);
  setSlider(dialog, id, static_cast<int32_t>(range->defaults[0]));
  return true;
}

bool handleExtra(DialogState* dialog, const WindowEvent& event) {
  EffectSettings* settings = settingsOf(dialog);
  if (settings->dragControl != kNoControl) return false;
  const Rectangle preview = controlRect(kPreviewArea);
  switch (event.kind) {
    case WindowEventKind::wheel:
      return stepSlider(dialog, sliderUnder(event.point), event.amount, event.shift);
    case WindowEventKind::key:
      return handleKey(dialog, event);
    case WindowEventKind::doubleClick:
      return restoreDefault(dialog, event.point);
    case WindowEventKind::otherDown:
      if (!pointInRect(event.point, &preview) || settings->hostDrawsPreview != 1) return false;
      dialog->showsSource = true;
      showSourceInPreview(dialog);
      return true;
    case WindowEventKind::otherUp:
      if (!dialog->showsSource) return false;
      dialog->showsSource = false;
      renderPreview(dialog);
      return true;
    default:
      return false;
  }
}
