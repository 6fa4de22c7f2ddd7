#include "dialog/dialog_extras.h"

#include <cstdint>

#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/typing.h"
#include "dialog/dialog_keys.h"
#include "dialog/dialog_mouse.h"
#include "dialog/dialog_state.h"
#include "dialog/preview/preview_area.h"
#include "dialog/undo.h"
#include "settings/setting_ranges.h"

// Its number counts as the slider, too.
static int32_t sliderUnder(Point point) {
  for (const Slider& slider : kSliders) {
    const Rectangle rect = controlRect(slider.id);
    const Rectangle number = controlRect(slider.valueArea);
    if (pointInRect(point, &rect) || pointInRect(point, &number)) return slider.id;
  }
  return kNoControl;
}

static bool turnWheel(DialogState* dialog, const WindowEvent& event) {
  const int32_t id = sliderUnder(event.point);
  takeTyping(dialog);
  if (id == kNoControl) return false;
  const int32_t step = event.shift ? kLargeStep : 1;
  stepSliderTo(dialog, id, dialog->controlValue[id] + event.amount * step);
  return true;
}

// What the first of the two clicks did goes with it.
static bool restoreDefault(DialogState* dialog, Point point) {
  const int32_t id = sliderUnder(point);
  if (id == kNoControl) return false;
  const SettingRange* range = findSetting(findSlider(id)->setting);
  setSlider(dialog, id, static_cast<int32_t>(range->defaults[0]),
            {ChangeKind::click, id, /*continues=*/true});
  return true;
}

static bool handlePointerExtra(DialogState* dialog, const WindowEvent& event) {
  const Rectangle preview = controlRect(kPreviewArea);
  switch (event.kind) {
    case WindowEventKind::wheel:
      return turnWheel(dialog, event);
    case WindowEventKind::doubleClick:
      takeTyping(dialog);
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
  if (dialog->popup != nullptr) return false;
  if (event.kind == WindowEventKind::key) return handleKey(dialog, event);
  // One thing at a time.
  if (settingsOf(dialog)->dragControl != kNoControl) return false;
  return handlePointerExtra(dialog, event);
}
