#include "tests/support/dialog/dialog_recording.h"

#include <algorithm>
#include <cstdio>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "settings/setting_fields.h"
#include "tests/support/dialog/dialog_runs.h"

static std::vector<std::string> lines;

void beginRecording() {
  lines.clear();
}

std::vector<std::string> recordedLines() {
  return lines;
}

void note(const std::string& name, const std::string& value) {
  lines.push_back(name + " = " + value);
}

// --- Settings -------------------------------------------------------------------------------

static std::string exactly(double value) {
  char text[40];
  std::snprintf(text, sizeof(text), "%.17g", value);
  return text;
}

// Pictures lie in a folder of each process.
static std::string fileName(const char* path) {
  const std::string prefix = temporaryFile("");
  const std::string text = path;
  return text.rfind(prefix, 0) == 0 ? text.substr(prefix.size()) : text;
}

static void noteSettings(const std::string& name) {
  const EffectSettings& settings = *hostSettings();
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    double values[3];
    readSetting(settings, kSettingRanges[i], values);
    std::string text;
    for (int32_t k = 0; k < settingComponents(kSettingRanges[i].form); ++k) {
      text += (k > 0 ? ", " : "") + exactly(values[k]);
    }
    note(name + " " + kSettingRanges[i].name, text);
  }
  const std::pair<const char*, int32_t> others[] = {
      {"scriptAmount", settings.scriptAmount},
      {"dragControl", settings.dragControl},
      {"previousTextureChoice", settings.previousTextureChoice},
      {"textureDragMoved", settings.textureDragMoved},
      {"hostDrawsPreview", settings.hostDrawsPreview},
      {"previewScale", settings.previewScale},
      {"previewOriginX", settings.previewOriginX},
      {"previewOriginY", settings.previewOriginY},
      {"light1Angle", settings.light1Angle},
      {"light2Angle", settings.light2Angle},
      {"light1Elevation", settings.light1Elevation},
      {"light2Elevation", settings.light2Elevation},
      {"textureWidth", settings.textureWidth},
      {"textureHeight", settings.textureHeight},
      {"variantOfTexture", static_cast<int32_t>(settings.proceduralTextureVariant)}};
  for (const auto& [field, value] : others) note(name + " " + field, std::to_string(value));
  note(name + " environmentPath", fileName(settings.environmentPath));
  note(name + " texturePath", fileName(settings.texturePath));
}

// --- Pixels ---------------------------------------------------------------------------------

static Rectangle grown(const Rectangle& rect, int32_t left, int32_t top, int32_t right,
                       int32_t bottom) {
  return {static_cast<int16_t>(rect.top - top), static_cast<int16_t>(rect.left - left),
          static_cast<int16_t>(rect.bottom + bottom), static_cast<int16_t>(rect.right + right)};
}

static void blacken(WindowPicture* picture, const Rectangle& area) {
  for (int32_t y = std::max<int32_t>(area.top, 0);
       y < std::min<int32_t>(area.bottom, picture->height); ++y) {
    for (int32_t x = std::max<int32_t>(area.left, 0);
         x < std::min<int32_t>(area.right, picture->width); ++x) {
      std::fill_n(picture->rgb.begin() + 3 * (y * picture->width + x), 3, uint8_t{0});
    }
  }
}

// Where a button of this kind has its text, inside frame and focus.
static int32_t textInset(int32_t id) {
  switch (id) {
    case kOkButton:
    case kCancelButton:
      return 5;
    case kZoomInButton:
    case kZoomOutButton:
      return 2;
    default:
      return 0;
  }
}

WindowPicture withoutTexts(WindowPicture picture) {
  for (int32_t i = 0; i < kLabelCount; ++i) {
    blacken(&picture, grown(controlRect(kLabels[i].id), scaled(2), scaled(2), pen() - 1, 0));
  }
  for (const Slider& slider : kSliders) {
    blacken(&picture, grown(controlRect(slider.valueArea), scaled(1), scaled(2), pen() - 1, 0));
  }
  for (int32_t id : {kOkButton, kCancelButton, kZoomInButton, kZoomOutButton, kZoomButton}) {
    const int32_t inset = textInset(id) * pen();
    blacken(&picture, grown(controlRect(id), -inset, -inset, -inset, -inset));
  }
  return picture;
}

static std::string sumOf(const WindowPicture& picture, const Rectangle& area) {
  uint64_t sum = 14695981039346656037U;
  for (int32_t y = std::max<int32_t>(area.top, 0);
       y < std::min<int32_t>(area.bottom, picture.height); ++y) {
    for (int32_t i = 3 * area.left; i < 3 * std::min<int32_t>(area.right, picture.width); ++i) {
      sum = (sum ^ picture.rgb[static_cast<size_t>(3 * y * picture.width + i)]) * 1099511628211U;
    }
  }
  char text[20];
  std::snprintf(text, sizeof(text), "%016llx", static_cast<unsigned long long>(sum));
  return text;
}

void look(DialogUser& user, const std::string& name) {
  noteSettings(name);
  WindowPicture picture = withoutTexts(user.pixels());
  note(name + " window", std::to_string(picture.width) + " x " + std::to_string(picture.height));
  for (int32_t i = 0; i < kMainDialog.controlCount; ++i) {
    const WindowControl& control = kMainDialog.controls[i];
    note(name + " control " + std::to_string(control.id), sumOf(picture, controlRect(control.id)));
  }
  const Rectangle whole = scaled({0, 0, kDialogHeight, kDialogWidth});
  note(name + " all", sumOf(picture, whole));
}

void lookAtPopup(DialogUser& user, const std::string& name, int32_t hotRow) {
  const int32_t height = scaled(36);
  const WindowPicture picture = user.popupPixels();
  note(name + " rows", std::to_string(picture.height / height));
  for (int32_t i = 0; i < picture.height / height; ++i) {
    const auto top = static_cast<int16_t>(height * i);
    const auto bottom = static_cast<int16_t>(top + height);
    const auto right = static_cast<int16_t>(scaled(46));
    const Rectangle row = {top, 0, bottom, right};
    const Rectangle face = {static_cast<int16_t>(top + scaled(2)), static_cast<int16_t>(scaled(14)),
                            static_cast<int16_t>(bottom - scaled(2)), right};
    note(name + " row " + std::to_string(i + 1), sumOf(picture, i + 1 == hotRow ? face : row));
  }
}
