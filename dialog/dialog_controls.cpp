#include "dialog/dialog_controls.h"

#include <initializer_list>

#include "dialog/dialog_state.h"
#include "dialog/preview_area.h"
#include "dialog/undo.h"
#include "services/fixed_point.h"
#include "settings/light_angles.h"
#include "settings/setting_ranges.h"

static int32_t* fieldNamed(DialogState* dialog, const char* name) {
  return reinterpret_cast<int32_t*>(reinterpret_cast<char*>(settingsOf(dialog)) +
                                    findSetting(name)->offset);
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
  return saturateToInt16(*fieldNamed(dialog, name));
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

void readControls(DialogState* dialog) {
  for (const Slider& slider : kSliders) {
    *fieldNamed(dialog, slider.setting) = dialog->controlValue[slider.id];
  }
  for (const Picker& picker : kPickers) {
    *fieldNamed(dialog, picker.setting) = dialog->controlValue[picker.id];
  }
  EffectSettings* settings = settingsOf(dialog);
  settings->proceduralTextureVariant = static_cast<uint32_t>(dialog->controlValue[kTexturePicker]);
  lightAngles(settings);
}

void refreshPreview(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  if (settings->autoPreview == 1) {
    readControls(dialog);
    renderPreview(dialog);
  }
  EffectSettings shown = *settings;
  // Without a render the controls are not read back yet; the history is of what they show.
  readControls(dialog);
  noteChange(dialog);
  if (shown.autoPreview != 1) copyUserSettings(settings, shown);
}
