#include "dialog/controls/dialog_reading.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "dialog/choices/picture_menus.h"
#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/light_pads.h"
#include "dialog/controls/small_controls.h"
#include "dialog/controls/typing.h"
#include "dialog/dialog_state.h"
#include "persistence/path_parts.h"

constexpr int32_t kFullTurn = 360;  // degrees

template <size_t bytes, typename... Values>
static void print(char (&text)[bytes], const char* format, Values... values) {
  std::snprintf(text, bytes, format, values...);
}

static void setRange(ControlReading* reading, int32_t amount, int32_t minimum, int32_t maximum) {
  reading->hasRange = true;
  reading->amount = amount;
  reading->minimum = minimum;
  reading->maximum = maximum;
}

static void readSlider(const DialogState* dialog, const Slider& slider, ControlReading* reading) {
  const int32_t shown = shownValue(slider, dialog->controlValue[slider.id]);
  reading->role = ControlRole::slider;
  setRange(reading, shown, slider.minimum, shownValue(slider, slider.maximum));
  print(reading->value, "%d", shown);
  print(reading->meaning, "%s", slider.meaning);
}

// While its menu is open, the row that the user is at.
static void readPicker(const DialogState* dialog, const Picker& picker, ControlReading* reading) {
  const bool open = dialog->popup != nullptr && dialog->popupPicker == picker.id;
  const bool atRow = open && dialog->popupHot != 0;
  const int32_t value =
      atRow ? picker.minimum + dialog->popupHot - 1 : dialog->controlValue[picker.id];
  reading->role = ControlRole::menu;
  setRange(reading, value, picker.minimum, picker.maximum);
  print(reading->value, "%s", choiceName(picker.id, value));
  print(reading->meaning, "%s", picker.meaning);
}

// Degrees from the right on, against the clock, as the handle stands.
static void readLight(const Direction& light, ControlReading* reading) {
  reading->role = ControlRole::dial;
  const double x = static_cast<double>(light.x);
  const double y = static_cast<double>(light.y);
  if (!std::isfinite(x) || !std::isfinite(y)) return;
  const double degrees = std::atan2(-y, x) * kDegreesPerRadian;
  const auto angle = static_cast<int32_t>(std::lround(degrees) + kFullTurn) % kFullTurn;
  setRange(reading, angle, 0, kFullTurn - 1);
  print(reading->value, "%d degrees, %.2f from the middle", angle, std::hypot(x, y));
}

static void readColour(const Color16& colour, ControlReading* reading) {
  print(reading->value, "#%02x%02x%02x", colour.red >> 8, colour.green >> 8, colour.blue >> 8);
}

static void readZoom(const EffectSettings* settings, ControlReading* reading) {
  const int32_t scale = settings->previewScale < 1 ? 1 : settings->previewScale;
  print(reading->value, "%d%%", 100 / scale);
}

static void readToggle(bool on, ControlReading* reading) {
  reading->role = ControlRole::toggle;
  reading->on = on;
  print(reading->value, "%s", on ? "on" : "off");
}

static void readOther(const DialogState* dialog, int32_t id, ControlReading* reading) {
  const EffectSettings* settings = settingsOf(dialog);
  print(reading->meaning, "%s", controlMeaning(id));
  switch (id) {
    case kCausticToggle:
      return readToggle(settings->iriTableChoice == 1, reading);
    case kAutoPreviewToggle:
      return readToggle(settings->autoPreview == 1, reading);
    case kLight1Pad:
      return readLight(settings->light1Dir, reading);
    case kLight2Pad:
      return readLight(settings->light2Dir, reading);
    case kLight1Button:
      return readColour(settings->light1Color, reading);
    case kLight2Button:
      return readColour(settings->light2Color, reading);
    case kTarnishButton:
      return readColour(settings->tarnishColor, reading);
    case kTextureSample:
      return print(reading->value, "%d to the left, %d up", settings->textureOffsetX,
                   settings->textureOffsetY);
    case kEnvironmentButton:
      return print(
          reading->value, "%s",
          settings->environmentPath[0] == 0 ? "built in" : fileNameOf(settings->environmentPath));
    case kSpinButton:
      return print(reading->value, "quarter turns: %d", settings->environmentTurns);
    case kPreviewArea:
      reading->role = ControlRole::image;
      return readZoom(settings, reading);
    case kZoomButton:
      return readZoom(settings, reading);
    default:
      return;
  }
}

bool readControl(void* context, int32_t id, ControlReading* reading) {
  const auto* dialog = static_cast<const DialogState*>(context);
  const char* name = controlName(id);
  if (name == nullptr) return false;
  *reading = {};
  reading->name = name;
  reading->disabled = dialog->session->dialog.controlEnabled[id] != 1;
  for (const Slider& slider : kSliders) {
    if (slider.id != id) continue;
    readSlider(dialog, slider, reading);
    return true;
  }
  for (const Picker& picker : kPickers) {
    if (picker.id != id) continue;
    readPicker(dialog, picker, reading);
    return true;
  }
  readOther(dialog, id, reading);
  return true;
}

void setFromOutside(DialogState* dialog, int32_t id, int32_t amount) {
  if (settingsOf(dialog)->dragControl != kNoControl || dialog->popup != nullptr) return;
  takeTyping(dialog);
  if (isPicker(id)) return postChoice(dialog, id, amount);
  if (id == kLight1Pad || id == kLight2Pad) return turnLight(dialog, id, amount);
  for (const Slider& slider : kSliders) {
    if (slider.id == id) setSlider(dialog, id, valueFromShown(slider, amount));
  }
}

void tellIfNews(DialogState* dialog, int32_t id, int32_t value) {
  if (dialog->readingTold[id] && dialog->toldReading[id] == value) return;
  dialog->readingTold[id] = true;
  dialog->toldReading[id] = value;
  tellReading(dialog->window, id);
}
