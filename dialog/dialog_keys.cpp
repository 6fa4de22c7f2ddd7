#include "dialog/dialog_keys.h"

#include <cstdint>

#include "dialog/choices/picture_windows.h"
#include "dialog/command_text.h"
#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/focus.h"
#include "dialog/controls/light_pads.h"
#include "dialog/controls/small_controls.h"
#include "dialog/controls/typing.h"
#include "dialog/dialog_commands.h"
#include "dialog/dialog_mouse.h"
#include "dialog/dialog_state.h"
#include "dialog/help/key_help.h"
#include "dialog/preview/drag.h"
#include "dialog/preview/preview_area.h"
#include "dialog/undo.h"

// --- What an arrow or a page key means ------------------------------------------------------

struct KeyStep {
  int32_t right;  // steps
  int32_t up;
  bool end;  // as far as it goes
};

static KeyStep stepOfKey(const WindowEvent& event) {
  const int32_t step = event.shift ? kLargeStep : 1;
  switch (event.key) {
    case WindowKey::left:
      return {-step, 0, false};
    case WindowKey::right:
      return {step, 0, false};
    case WindowKey::down:
      return {0, -step, false};
    case WindowKey::up:
      return {0, step, false};
    case WindowKey::pageDown:
      return {0, -kLargeStep, false};
    case WindowKey::pageUp:
      return {0, kLargeStep, false};
    case WindowKey::home:
      return {-1, 0, true};
    case WindowKey::end:
      return {1, 0, true};
    default:
      return {0, 0, false};
  }
}

static bool moveControl(DialogState* dialog, int32_t id, const KeyStep& step) {
  if (step.right == 0 && step.up == 0) return false;
  if (findSlider(id) != nullptr) {
    takeTyping(dialog);
    if (step.end) {
      stepSliderTo(dialog, id, step.right < 0 ? dialog->controlMin[id] : dialog->controlMax[id]);
    } else {
      stepSliderTo(dialog, id, dialog->controlValue[id] + step.right + step.up);
    }
    return true;
  }
  switch (id) {
    case kLight1Pad:
    case kLight2Pad:
      stepLight(dialog, id, step.right, -step.up, step.end);
      return true;
    case kTextureSample:
      if (!step.end) stepTexture(dialog, step.right, -step.up);
      return true;
    case kPreviewArea:
      stepPan(dialog, step.right, -step.up, step.end);
      return true;
    default:
      return false;
  }
}

// --- Single keys ----------------------------------------------------------------------------

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

// Enter takes what is typed, presses the button that has the focus, and is OK's otherwise.
static bool pressEnter(DialogState* dialog, int32_t focused) {
  if (takeTyping(dialog)) return true;
  for (int32_t i = 0; i < kMainDialog.controlCount; ++i) {
    const WindowControl& control = kMainDialog.controls[i];
    if (control.id != focused || control.kind != ControlKind::button) continue;
    handleCommand(dialog, focused, 0);
    return true;
  }
  return false;
}

static bool actOnControl(DialogState* dialog, int32_t id, const WindowEvent& event) {
  const bool slider = findSlider(id) != nullptr;
  if (event.key == WindowKey::character) {
    if (event.character == ' ') return useArea(dialog, id);
    return slider && typeCharacter(dialog, id, event.character);
  }
  if (event.key == WindowKey::backspace) return slider && eraseCharacter(dialog, id);
  if (event.key == WindowKey::down && isPicker(id)) return useArea(dialog, id);
  return moveControl(dialog, id, stepOfKey(event));
}

static bool undoOrRedo(DialogState* dialog, bool undo) {
  if (giveUpTyping(dialog)) return true;
  if (undo ? undoChange(dialog) : redoChange(dialog)) showHistoryStep(dialog);
  return true;
}

// The focus; without one, or with one that the pointer has given to a button, the slider under the
// pointer.
static int32_t controlForKeys(const DialogState* dialog, const WindowEvent& event) {
  if (dialog->focusedArea != 0) return dialog->focusedArea;
  const bool none = event.id == 0 || !dialog->focusByKeyboard;
  return none && findSlider(dialog->wheelControl) != nullptr ? dialog->wheelControl : event.id;
}

bool handleKey(DialogState* dialog, const WindowEvent& event) {
  if (settingsOf(dialog)->dragControl != kNoControl) {
    if (event.key == WindowKey::escape) undoDrag(dialog);
    return true;  // one thing at a time
  }
  switch (event.key) {
    case WindowKey::enter:
      return pressEnter(dialog, event.id);
    case WindowKey::escape:
      return giveUpTyping(dialog);
    case WindowKey::tab:
      takeTyping(dialog);
      moveFocusByTab(dialog, event.id, event.shift);
      return true;
    case WindowKey::undo:
      return undoOrRedo(dialog, /*undo=*/true);
    case WindowKey::redo:
      return undoOrRedo(dialog, /*undo=*/false);
    case WindowKey::copy:
      takeTyping(dialog);
      copyCommand(dialog);
      return true;
    case WindowKey::help:
      takeTyping(dialog);
      showKeyHelp();
      return true;
    default: {
      if (event.key == WindowKey::character && event.character == '?') {
        takeTyping(dialog);
        showKeyHelp();
        return true;
      }
      const bool used = actOnControl(dialog, controlForKeys(dialog, event), event);
      if (used && dialog->focusedArea != 0) keyboardActs(dialog);
      return used;
    }
  }
}
