#include "dialog/dialog_extras.h"

#include <algorithm>
#include <cstdint>

#include "dialog/command_text.h"
#include "dialog/dialog_controls.h"
#include "dialog/dialog_mouse.h"
#include "dialog/dialog_state.h"
#include "dialog/preview_area.h"
#include "dialog/small_controls.h"
#include "dialog/undo.h"
#include "settings/setting_ranges.h"

constexpr int32_t kLargeStep = 10;
constexpr int32_t kMostDigits = 4;

// Its number counts as the slider, too.
static int32_t sliderUnder(Point point) {
  for (const Slider& slider : kSliders) {
    const Rectangle rect = controlRect(slider.id);
    const Rectangle number = controlRect(slider.valueArea);
    if (pointInRect(point, &rect) || pointInRect(point, &number)) return slider.id;
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

static bool eraseCharacter(DialogState* dialog) {
  TypedNumber* typed = &dialog->typed;
  if (typed->digits == 0) typed->negative = false;
  typed->value /= 10;
  typed->digits = std::max(typed->digits - 1, 0);
  return true;
}

static bool finishTyping(DialogState* dialog) {
  const TypedNumber typed = dialog->typed;
  dialog->typed = {};
  if (typed.digits == 0) return false;
  setSlider(dialog, typed.slider,
            valueFromShown(*findSlider(typed.slider), typed.negative ? -typed.value : typed.value));
  return true;
}

// --- Keys -----------------------------------------------------------------------------------

static void showHistoryStep(DialogState* dialog) {
  loadControls(dialog, /*redrawPictures=*/true);
  repaintControl(dialog, kAutoPreviewToggle);
  refreshPreview(dialog);
}

static void copyCommand(DialogState* dialog) {
  char command[kCommandTextBytes];
  writeCommandText(shownSettings(dialog), command);
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
      return slider && eraseCharacter(dialog);
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

// A number that is being typed is forgotten when the pointer goes to work.
static bool handlePointerExtra(DialogState* dialog, const WindowEvent& event) {
  const Rectangle preview = controlRect(kPreviewArea);
  dialog->typed = {};
  switch (event.kind) {
    case WindowEventKind::wheel:
      return stepSlider(dialog, sliderUnder(event.point), event.amount, event.shift);
    case WindowEventKind::doubleClick:
      if (!restoreDefault(dialog, event.point)) handlePress(dialog, event.point);
      return true;
    case WindowEventKind::otherDown:
      if (!pointInRect(event.point, &preview)) return false;
      showSource(dialog);
      return true;
    default:
      return false;
  }
}

bool handleExtra(DialogState* dialog, const WindowEvent& event) {
  if (event.kind == WindowEventKind::otherUp) {
    hideSource(dialog);
    return true;
  }
  // One thing at a time.
  if (settingsOf(dialog)->dragControl != kNoControl || dialog->popup != nullptr) return false;
  return event.kind == WindowEventKind::key ? handleKey(dialog, event)
                                            : handlePointerExtra(dialog, event);
}
