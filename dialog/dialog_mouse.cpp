#include "dialog/dialog_mouse.h"

#include <cstdint>

#include "dialog/dialog_commands.h"
#include "dialog/dialog_controls.h"
#include "dialog/dialog_state.h"
#include "dialog/light_pads.h"
#include "dialog/picture_menus.h"
#include "dialog/picture_windows.h"
#include "dialog/preview_area.h"
#include "dialog/small_controls.h"

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

static bool isPicker(int32_t id) {
  return id == kShapePicker || id == kTexturePicker || id == kBlendPicker;
}

void handlePress(DialogState* dialog, Point point) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t id = controlUnder(point);
  dialog->typed = {};
  if (id == kNoControl) return;
  if (isPicker(id)) return openPicker(dialog, id, clientToScreen(dialog->window, point));
  if (id == kPreviewArea) {
    if (!canPan(dialog)) return;
    settings->dragControl = id;
    captureMouse(dialog->window);
    settings->lastMouse = point;
    setCursor(dialog->window, CursorShape::closedHand);
    return;
  }
  captureMouse(dialog->window);
  if (findSlider(id) != nullptr) setFocusedControl(dialog->window, id);
  settings->dragControl = id;
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
  } else if (id == kCausticToggle) {
    trackToggle(dialog, id, static_cast<int32_t>(settings->iriTableChoice));
  } else if (id == kAutoPreviewToggle) {
    trackToggle(dialog, id, static_cast<int32_t>(settings->autoPreview));
  } else if (id == kTextureSample) {
    dragTexture(dialog);
  } else if (findSlider(id) != nullptr) {
    dragSlider(dialog, id);
  }
}

// Each answers whether the preview is to be rendered again.
static bool releaseCausticToggle(DialogState* dialog) {
  if (dialog->controlValue[kCausticToggle] != 1) return false;
  settingsOf(dialog)->iriTableChoice ^= 1;
  repaintControl(dialog, kCausticToggle);
  return true;
}

static bool releaseAutoPreview(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  if (dialog->controlValue[kAutoPreviewToggle] != 1) return true;
  settings->autoPreview ^= 1;
  repaintControl(dialog, kAutoPreviewToggle);
  return true;  // which renders only when it is on now
}

// A click without a drag opens a picture file.
static bool releaseTextureSample(DialogState* dialog) {
  if (settingsOf(dialog)->textureDragMoved == 1) return true;
  if (dialog->controlValue[kTextureSample] != 1) return false;
  const bool taken = openTexturePicture(dialog);
  settleTextureFile(dialog, taken);
  if (taken) repaintControl(dialog, kTextureFrame);
  return taken;
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
  if (render) refreshPreview(dialog);
}
