#include "dialog/drag.h"

#include "dialog/dialog_controls.h"
#include "dialog/dialog_state.h"
#include "dialog/preview_area.h"

void beginDrag(DialogState* dialog, int32_t id) {
  EffectSettings* settings = settingsOf(dialog);
  dialog->dragStart.settings = *settings;
  dialog->dragStart.value = dialog->controlValue[id];
  dialog->previewStale = false;
  dialog->previewFollowed = false;
  settings->dragControl = id;
}

static void showAgain(DialogState* dialog, int32_t id) {
  const Slider* slider = findSlider(id);
  repaintControl(dialog, id == kTextureSample ? kTextureFrame : id);
  if (slider != nullptr) repaintControl(dialog, slider->valueArea);
}

void undoDrag(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t id = settings->dragControl;
  const bool followed = dialog->previewFollowed;
  *settings = dialog->dragStart.settings;
  settings->dragControl = kNoControl;
  dialog->controlValue[id] = dialog->dragStart.value;
  dialog->previewStale = false;
  releaseMouse(dialog->window);
  setCursor(dialog->window, CursorShape::arrow);
  if (id == kPreviewArea) return movePreviewBack(dialog);
  showAgain(dialog, id);
  if (!followed) return;
  readControls(dialog);
  renderPreview(dialog);
}

void followDrag(DialogState* dialog) {
  const EffectSettings* settings = settingsOf(dialog);
  if (settings->autoPreview != 1 || settings->hostDrawsPreview != 1) return;
  dialog->previewStale = true;
  awaitRest(dialog->window);
}

void renderDrag(DialogState* dialog) {
  if (!dialog->previewStale || settingsOf(dialog)->dragControl == kNoControl) return;
  dialog->previewStale = false;
  dialog->previewFollowed = true;
  readControls(dialog);
  renderPreviewAtOnce(dialog);
}
