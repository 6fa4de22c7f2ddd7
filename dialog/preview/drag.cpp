#include "dialog/preview/drag.h"

#include "dialog/controls/dialog_controls.h"
#include "dialog/dialog_state.h"
#include "dialog/preview/preview_area.h"

void beginDrag(DialogState* dialog, int32_t id) {
  EffectSettings* settings = settingsOf(dialog);
  renderAtRest(dialog);
  dialog->dragStart.settings = *settings;
  dialog->dragStart.value = dialog->controlValue[id];
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

static bool follows(const DialogState* dialog) {
  const EffectSettings* settings = settingsOf(dialog);
  return settings->autoPreview == 1 && settings->hostDrawsPreview == 1;
}

void followControl(DialogState* dialog) {
  if (!follows(dialog)) return;
  dialog->previewStale = true;
  awaitRest(dialog->window);
}

void renderAtRest(DialogState* dialog) {
  const bool stale = dialog->previewStale;
  dialog->previewStale = false;
  if (!stale || !follows(dialog)) return;
  readControls(dialog);
  if (settingsOf(dialog)->dragControl == kNoControl) return renderPreview(dialog);
  dialog->previewFollowed = true;
  renderPreviewAtOnce(dialog);
}
