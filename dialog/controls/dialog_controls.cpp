#include "dialog/controls/dialog_controls.h"

#include <algorithm>
#include <initializer_list>

#include "dialog/dialog_state.h"
#include "dialog/preview/drag.h"
#include "dialog/preview/preview_area.h"
#include "dialog/undo.h"
#include "services/fixed_point.h"
#include "settings/light_angles.h"
#include "settings/setting_ranges.h"

static int32_t* fieldNamed(EffectSettings* settings, const char* name) {
  return reinterpret_cast<int32_t*>(reinterpret_cast<char*>(settings) + findSetting(name)->offset);
}

void setControlRanges(DialogState* dialog) {
  for (const Slider& slider : kSliders) {
    dialog->controlMin[slider.id] = slider.minimum;
    dialog->controlMax[slider.id] = slider.maximum;
  }
  for (const Picker& picker : kPickers) {
    dialog->controlMin[picker.id] = picker.minimum;
    dialog->controlMax[picker.id] = picker.maximum;
  }
}

// Control values are 16-bit numbers, whatever a file has put into the settings.
static int32_t valueOfField(DialogState* dialog, const char* name) {
  return saturateToInt16(*fieldNamed(settingsOf(dialog), name));
}

void loadControls(DialogState* dialog, bool redrawPictures) {
  for (const Picker& picker : kPickers) {
    dialog->controlValue[picker.id] = valueOfField(dialog, picker.setting);
  }
  for (const Slider& slider : kSliders) {
    dialog->controlValue[slider.id] = valueOfField(dialog, slider.setting);
  }
  dialog->controlValue[kCausticToggle] = static_cast<int32_t>(settingsOf(dialog)->iriTableChoice);
  lightAngles(settingsOf(dialog));
  for (int32_t id : {kLight1Pad, kLight2Pad, kLight1Button, kLight2Button, kTarnishButton}) {
    repaintControl(dialog, id);
  }
  if (redrawPictures) {
    repaintControl(dialog, kEnvironmentButton);
    repaintControl(dialog, kTextureFrame);
  }
  for (const Slider& slider : kSliders) {
    repaintControl(dialog, slider.id);
    repaintControl(dialog, slider.valueArea);
  }
  for (const Picker& picker : kPickers) repaintControl(dialog, picker.id);
  repaintControl(dialog, kCausticToggle);
}

EffectSettings shownSettings(const DialogState* dialog) {
  EffectSettings shown = *settingsOf(dialog);
  for (const Slider& slider : kSliders) {
    *fieldNamed(&shown, slider.setting) = dialog->controlValue[slider.id];
  }
  for (const Picker& picker : kPickers) {
    *fieldNamed(&shown, picker.setting) = dialog->controlValue[picker.id];
  }
  shown.proceduralTextureVariant = static_cast<uint32_t>(dialog->controlValue[kTexturePicker]);
  lightAngles(&shown);
  return shown;
}

void readControls(DialogState* dialog) {
  *settingsOf(dialog) = shownSettings(dialog);
}

void refreshPreview(DialogState* dialog, const Change& change) {
  if (settingsOf(dialog)->autoPreview == 1) {
    readControls(dialog);
    if (change.kind == ChangeKind::steps) {
      followControl(dialog);
    } else {
      dialog->previewStale = false;
      renderPreview(dialog);
    }
  }
  noteChange(dialog, shownSettings(dialog), change);
}

void setSlider(DialogState* dialog, int32_t id, int32_t value, const Change& change) {
  const int32_t limited = std::clamp(value, dialog->controlMin[id], dialog->controlMax[id]);
  if (dialog->controlValue[id] == limited) return;
  dialog->controlValue[id] = limited;
  repaintControl(dialog, id);
  repaintControl(dialog, findSlider(id)->valueArea);
  refreshPreview(dialog, change);
}

void stepSliderTo(DialogState* dialog, int32_t id, int32_t value) {
  setSlider(dialog, id, value, {ChangeKind::steps, id, /*continues=*/true});
}
