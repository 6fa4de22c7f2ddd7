// control_table: the controls of the main dialog: where each stands, what it shows, what it edits.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/window.h"

constexpr int32_t kControlIds = 100;
constexpr int32_t kNoControl = -1;

// Control ids.
constexpr int32_t kCancelButton = 2;
constexpr int32_t kOkButton = 3;
constexpr int32_t kTexturePicker = 17;
constexpr int32_t kShapePicker = 21;
constexpr int32_t kBlendPicker = 66;
constexpr int32_t kShapeArrow = 24;  // picture beside the pickers
constexpr int32_t kBlendSymbol = 73;
constexpr int32_t kLight1Pad = 33;
constexpr int32_t kLight2Pad = 45;
constexpr int32_t kPreviewArea = 35;
constexpr int32_t kEnvironmentFrame = 37;
constexpr int32_t kEnvironmentButton = 38;
constexpr int32_t kAutoPreviewToggle = 39;
constexpr int32_t kLight1Button = 44;
constexpr int32_t kLight2Button = 46;
constexpr int32_t kTarnishButton = 60;
constexpr int32_t kZoomInButton = 47;
constexpr int32_t kZoomOutButton = 48;
constexpr int32_t kZoomButton = 72;
constexpr int32_t kTextureFrame = 49;
constexpr int32_t kTextureSample = 50;
constexpr int32_t kSaveButton = 61;
constexpr int32_t kLoadButton = 62;
constexpr int32_t kSpinButton = 63;
constexpr int32_t kRandomizeButton = 65;
constexpr int32_t kCausticToggle = 74;
constexpr int32_t kReflectionSlider = 15;
constexpr int32_t kRadiusSlider = 9;

extern const WindowTemplate kMainDialog;  // at 100 percent

// Name of a control that is neither slider nor picker, null for one that the user cannot act on;
// and what its tool tip says of it.
const char* controlName(int32_t id);
const char* controlMeaning(int32_t id);

// Rectangle of a control in client pixels, and at 100 percent; empty for an id that no control has.
Rectangle controlRect(int32_t id);
Rectangle tableRect(int32_t id);

struct Label {
  int32_t id;
  const char* text;
};
extern const Label kLabels[];
extern const int32_t kLabelCount;

// A slider, the areas that show its value and its name, and the setting that it edits.
struct Slider {
  int32_t id;
  int32_t valueArea;
  int32_t label;        // 0 for none
  const char* setting;  // name of the field
  int32_t minimum;
  int32_t maximum;
  int32_t track;  // bitmap
  const char* name;
  const char* meaning;
};
constexpr int32_t kSliderCount = 12;
extern const Slider kSliders[kSliderCount];  // in painting order

// The row of a slider, by its own id or its value area's; null for any other id.
const Slider* findSlider(int32_t id);

// A picker and the setting that it edits.
struct Picker {
  int32_t id;
  const char* setting;
  int32_t minimum;
  int32_t maximum;
  const char* name;
  const char* meaning;
};
constexpr int32_t kPickerCount = 3;
extern const Picker kPickers[kPickerCount];

bool isPicker(int32_t id);

// Face bitmap of a picture button; 0 for none.
int32_t buttonBitmap(int32_t id);
