#include "dialog/controls/control_table.h"

#include "dialog/controls/dialog_reading.h"
#include "dialog/dialog_scale.h"

// left, top, right, bottom into the rectangle's own order.
#define AT(l, t, r, b) \
  Rectangle {          \
    t, l, b, r         \
  }
#define AREA(id, rect, tip) \
  { id, ControlKind::area, rect, nullptr, tip }
#define NAMED_AREA(id, rect, name, tip) \
  { id, ControlKind::area, rect, name, tip }
#define BUTTON(id, rect, name, tip) \
  { id, ControlKind::button, rect, name, tip }

// A row of the left column: label, slider and value area on one band.
#define SLIDER_ROW(label, slider, value, top, name)                    \
  AREA(label, AT(2, (top)-1, 59, (top) + 15), nullptr),                \
      NAMED_AREA(slider, AT(66, top, 201, (top) + 12), name, nullptr), \
      AREA(value, AT(203, top, 227, (top) + 13), nullptr)

constexpr WindowControl kControls[] = {
    AREA(6, AT(12, 21, 60, 37), nullptr),
    AREA(7, AT(4, 290, 59, 306), nullptr),
    NAMED_AREA(kShapePicker, AT(66, 10, 101, 45), "Shape", "Shape: cross-section of the bevel"),
    AREA(kShapeArrow, AT(186, 20, 203, 37), nullptr),
    NAMED_AREA(kTexturePicker, AT(267, 10, 302, 45), "Texture",
               "Texture: relief pressed into the surface"),
    AREA(kTextureFrame, AT(267, 54, 334, 121), nullptr),
    NAMED_AREA(kTextureSample, AT(270, 57, 334, 121), "Texture sample",
               "Drag to shift the texture, click to open a picture"),
    NAMED_AREA(69, AT(267, 126, 337, 138), "Texture size", nullptr),
    AREA(70, AT(339, 126, 359, 139), nullptr),
    AREA(kEnvironmentFrame, AT(267, 150, 334, 217), nullptr),
    NAMED_AREA(kBlendPicker, AT(300, 230, 335, 265), "Blend mode",
               "Blend mode: how the effect meets the picture"),
    AREA(kBlendSymbol, AT(270, 239, 290, 258), nullptr),
    NAMED_AREA(kPreviewArea, AT(371, 9, 669, 298), "Preview",
               "Drag: another part. Right button: untouched. F1 or ?: keys and mouse"),
    NAMED_AREA(kAutoPreviewToggle, AT(406, 309, 420, 323), "Auto preview",
               "Render the preview after every change"),
    AREA(40, AT(423, 310, 487, 325), nullptr),
    NAMED_AREA(kLight1Pad, AT(61, 283, 140, 368), "Light 1", "Direction of light 1"),
    NAMED_AREA(kLight2Pad, AT(146, 283, 225, 368), "Light 2", "Direction of light 2"),
    NAMED_AREA(kCausticToggle, AT(235, 188, 249, 202), "Grey caustic",
               "Caustic light: coloured or grey"),
    SLIDER_ROW(8, kRadiusSlider, 25, 54, "Radius"),
    SLIDER_ROW(10, 11, 13, 73, "Height"),
    SLIDER_ROW(18, 19, 20, 92, "Texture depth"),
    SLIDER_ROW(30, 28, 26, 111, "Gloss"),
    SLIDER_ROW(31, 12, 32, 130, "Glare"),
    SLIDER_ROW(14, kReflectionSlider, 16, 150, "Reflection"),
    SLIDER_ROW(51, 52, 53, 170, "Glassiness"),
    SLIDER_ROW(29, 27, 34, 190, "Caustic"),
    SLIDER_ROW(54, 55, 56, 209, "Iridescence"),
    SLIDER_ROW(41, 42, 43, 228, "Iri colors"),
    SLIDER_ROW(57, 58, 59, 247, "Tarnish"),
    BUTTON(kEnvironmentButton, AT(270, 153, 334, 217), "Environment picture",
           "Open an environment picture"),
    BUTTON(kSpinButton, AT(340, 178, 358, 195), "Spin", "Turn the environment a quarter"),
    BUTTON(kLight1Button, AT(38, 337, 58, 357), "Color of light 1", "Color of light 1"),
    BUTTON(kLight2Button, AT(232, 337, 252, 357), "Color of light 2", "Color of light 2"),
    BUTTON(kTarnishButton, AT(232, 243, 252, 263), "Tarnish color", "Color of the tarnish"),
    BUTTON(kRandomizeButton, AT(267, 273, 337, 298), "Randomize", "Draw random settings"),
    BUTTON(kLoadButton, AT(267, 303, 337, 328), "Load", "Open a settings file"),
    BUTTON(kSaveButton, AT(267, 333, 337, 358), "Save", "Save a settings file"),
    BUTTON(kZoomOutButton, AT(559, 309, 573, 323), "Zoom out", "Zoom out"),
    BUTTON(kZoomButton, AT(580, 309, 615, 324), "Zoom to 100%", "Zoom to 100%"),
    BUTTON(kZoomInButton, AT(621, 309, 635, 323), "Zoom in", "Zoom in"),
    BUTTON(kCancelButton, AT(371, 333, 431, 358), "Cancel", nullptr),
    BUTTON(kOkButton, AT(609, 333, 669, 358), "OK", nullptr),
};

const WindowTemplate kMainDialog = {
    "DISSOLVESANSPARAM", "Morvalis",    kDialogWidth,
    kDialogHeight,       kControls,     sizeof(kControls) / sizeof(kControls[0]),
    kOkButton,           kCancelButton, readControl};

const Label kLabels[] = {{6, "Shape"},       {8, "Radius"},       {10, "Height"},
                         {14, "Reflection"}, {30, "Gloss"},       {31, "Glare"},
                         {18, "Texture"},    {7, "Lights"},       {40, "Auto preview"},
                         {41, "Iri colors"}, {54, "Iridescence"}, {57, "Tarnish"},
                         {51, "Glassiness"}, {29, "Caustic"}};
const int32_t kLabelCount = sizeof(kLabels) / sizeof(kLabels[0]);

const Slider kSliders[kSliderCount] = {
    {42, 43, 41, "iriColors", 0, 100, 221, "Iri colors", "thickness of the film"},
    {55, 56, 54, "iridescence", 0, 100, 142, "Iridescence", "strength of the film's colours"},
    {27, 34, 29, "caustic", 0, 100, 140, "Caustic", "light gathered behind glass"},
    {12, 32, 31, "glare", 0, 100, 139, "Glare", "breadth of the highlights"},
    {52, 53, 51, "glassiness", 0, 100, 138, "Glassiness", "how much light passes through"},
    {28, 26, 30, "gloss", 0, 100, 137, "Gloss", "strength of the highlights"},
    {11, 13, 10, "height", -100, 100, 136, "Height", "height of the bevel; negative presses it in"},
    {kRadiusSlider, 25, 8, "radius", 2, 100, 125, "Radius", "width of the bevel in pixels"},
    {kReflectionSlider, 16, 14, "reflection", 0, 100, 129, "Reflection", "how much is mirrored"},
    {58, 59, 57, "tarnish", 0, 100, 130, "Tarnish", "how much gathers in hollows"},
    {19, 20, 18, "texture", -100, 100, 133, "Texture",
     "depth of the relief; negative turns it inside out"},
    {69, 70, 0, "textureScale", 0, 100, 135, "Texture size", "size of the relief on the object"}};

const Picker kPickers[kPickerCount] = {
    {kShapePicker, "shape", 1, 13, "Shape", "cross-section of the bevel"},
    {kTexturePicker, "textureChoice", 1, 13, "Texture", "relief pressed into the surface"},
    {kBlendPicker, "blendMode", 1, 12, "Blend mode", "how the effect meets the picture"}};

static const WindowControl* findControl(int32_t id) {
  for (const WindowControl& control : kControls) {
    if (control.id == id) return &control;
  }
  return nullptr;
}

const char* controlName(int32_t id) {
  const WindowControl* control = findControl(id);
  return control == nullptr ? nullptr : control->name;
}

const char* controlMeaning(int32_t id) {
  const WindowControl* control = findControl(id);
  return control == nullptr || control->toolTip == nullptr ? "" : control->toolTip;
}

Rectangle tableRect(int32_t id) {
  const WindowControl* control = findControl(id);
  return control == nullptr ? Rectangle{} : control->rect;
}

Rectangle controlRect(int32_t id) {
  return scaled(tableRect(id));
}

const Slider* findSlider(int32_t id) {
  for (const Slider& slider : kSliders) {
    if (slider.id == id || slider.valueArea == id) return &slider;
  }
  return nullptr;
}

bool isPicker(int32_t id) {
  return id == kShapePicker || id == kTexturePicker || id == kBlendPicker;
}

int32_t buttonBitmap(int32_t id) {
  switch (id) {
    case kSaveButton:
      return 223;
    case kLoadButton:
      return 224;
    case kSpinButton:
      return 225;
    case kRandomizeButton:
      return 228;
    default:
      return 0;
  }
}
