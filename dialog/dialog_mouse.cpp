#include "dialog/dialog_mouse.h"

#include <cstdint>

#include "dialog/choices/picture_menus.h"
#include "dialog/choices/picture_windows.h"
#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/focus.h"
#include "dialog/controls/light_pads.h"
#include "dialog/controls/small_controls.h"
#include "dialog/dialog_commands.h"
#include "dialog/dialog_state.h"
#include "dialog/preview/preview_area.h"

constexpr int16_t kJustPressed = -999;  // horizontal part of lastMouse: no position before

// In the order in which a press looks for its control.
constexpr int32_t kHitOrder[] = {kPreviewArea,
                                 kLight1Pad,
                                 kLight2Pad,
                                 42,
                                 27,
                                 55,
                                 12,
                                 52,
                                 28,
                                 11,
                                 kRadiusSlider,
                                 kReflectionSlider,
                                 58,
                                 19,
                                 69,
                                 kCausticToggle,
                                 kAutoPreviewToggle,
                                 kShapePicker,
                                 kTexturePicker,
                                 kBlendPicker,
                                 kTextureSample};

static int32_t controlUnder(Point point) {
  for (int32_t id : kHitOrder) {
    const Rectangle rect = controlRect(id);
    if (pointInRect(point, &rect)) return id;
  }
  return kNoControl;
}

static bool canPan(const DialogState* dialog) {
  const EffectSettings* settings = settingsOf(dialog);
  return settings->hostDrawsPreview == 1 && settings->previewScale != dialog->fitScale;
}

// The slider whose label or number is there.
static int32_t sliderNamedUnder(Point point) {
  for (const Slider& slider : kSliders) {
    const Rectangle number = controlRect(slider.valueArea);
    const Rectangle label = controlRect(slider.label);
    if (pointInRect(point, &number) || pointInRect(point, &label)) return slider.id;
  }
  return kNoControl;
}

// Only what the pointer has pressed can take the keyboard from what has it; the preview leaves it
// there.
static void pressPreview(DialogState* dialog, Point point) {
  if (!canPan(dialog)) return;
  beginDrag(dialog, kPreviewArea);
  captureMouse(dialog->window);
  settingsOf(dialog)->lastMouse = point;
  setCursor(dialog->window, CursorShape::closedHand);
}

void handlePress(DialogState* dialog, Point point) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t id = controlUnder(point);
  takeTyping(dialog);
  endChange(dialog);
  if (id == kNoControl) {
    const int32_t named = sliderNamedUnder(point);
    if (named != kNoControl) focusArea(dialog, named);
    return;
  }
  if (id == kPreviewArea) return pressPreview(dialog, point);
  focusArea(dialog, id);
  if (isPicker(id)) return openPicker(dialog, id, clientToScreen(dialog->window, point));
  captureMouse(dialog->window);
  beginDrag(dialog, id);
  settings->textureDragMoved = 0;
  // The control answers to the press's own place at once.
  postMouseMove(dialog->window, point);
  settings->lastMouse.h = kJustPressed;
}

static CursorShape idleCursor(const DialogState* dialog, Point point) {
  const int32_t id = controlUnder(point);
  const bool grabs = (id == kPreviewArea && canPan(dialog)) || id == kTextureSample;
  return grabs ? CursorShape::openHand : CursorShape::arrow;
}

void handleMove(DialogState* dialog, Point point) {
  EffectSettings* settings = settingsOf(dialog);
  settings->mouse = point;
  const int32_t id = settings->dragControl;
  if (id == kTextureSample) setCursor(dialog->window, CursorShape::closedHand);
  if (id == kNoControl) {
    dialog->wheelControl = controlUnder(point);
    setCursor(dialog->window, idleCursor(dialog, point));
  } else if (id == kPreviewArea) {
    panPreview(dialog);
  } else if (id == kLight1Pad || id == kLight2Pad) {
    dragLight(dialog, id);
    followControl(dialog);
  } else if (id == kCausticToggle) {
    trackToggle(dialog, id, static_cast<int32_t>(settings->iriTableChoice));
  } else if (id == kAutoPreviewToggle) {
    trackToggle(dialog, id, static_cast<int32_t>(settings->autoPreview));
  } else if (id == kTextureSample) {
    dragTexture(dialog);
    if (settings->textureDragMoved == 1) followControl(dialog);
  } else if (findSlider(id) != nullptr) {
    dragSlider(dialog, id);
    followControl(dialog);
  }
}

// Each answers whether the preview is to be rendered again.
static void changeToggle(DialogState* dialog, int32_t id) {
  EffectSettings* settings = settingsOf(dialog);
  (id == kCausticToggle ? settings->iriTableChoice : settings->autoPreview) ^= 1;
  repaintControl(dialog, id);
  tellReading(dialog->window, id);
}

static bool releaseCausticToggle(DialogState* dialog) {
  if (dialog->controlValue[kCausticToggle] != 1) return false;
  changeToggle(dialog, kCausticToggle);
  return true;
}

static bool releaseAutoPreview(DialogState* dialog) {
  if (dialog->controlValue[kAutoPreviewToggle] == 1) changeToggle(dialog, kAutoPreviewToggle);
  return true;  // which renders only when it is on now
}

static void flipToggle(DialogState* dialog, int32_t id) {
  changeToggle(dialog, id);
  refreshPreview(dialog);
}

static bool openTextureFile(DialogState* dialog) {
  const bool taken = openTexturePicture(dialog);
  settleTextureFile(dialog, taken);
  if (taken) repaintControl(dialog, kTextureFrame);
  return taken;
}

// A click without a drag opens a picture file.
static bool releaseTextureSample(DialogState* dialog) {
  if (settingsOf(dialog)->textureDragMoved == 1) return true;
  return dialog->controlValue[kTextureSample] == 1 && openTextureFile(dialog);
}

static void chooseTextureFile(DialogState* dialog) {
  if (openTextureFile(dialog)) refreshPreview(dialog);
}

bool useArea(DialogState* dialog, int32_t id) {
  switch (id) {
    case kShapePicker:
    case kTexturePicker:
    case kBlendPicker:
      openPickerByKey(dialog, id);
      return true;
    case kCausticToggle:
    case kAutoPreviewToggle:
      flipToggle(dialog, id);
      return true;
    case kTextureSample:
      chooseTextureFile(dialog);
      return true;
    default:
      return false;
  }
}

void handleRelease(DialogState* dialog, Point) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t id = settings->dragControl;
  releaseMouse(dialog->window);
  if (id == kNoControl) return;
  bool render = true;
  if (id == kCausticToggle) render = releaseCausticToggle(dialog);
  if (id == kAutoPreviewToggle) render = releaseAutoPreview(dialog);
  if (id == kTextureSample) render = releaseTextureSample(dialog);
  settings->dragControl = kNoControl;
  dialog->previewStale = false;
  if (id == kPreviewArea) return finishPan(dialog);
  const bool slider = findSlider(id) != nullptr;
  if (render) refreshPreview(dialog, slider ? Change{ChangeKind::click, id, false} : Change{});
}
