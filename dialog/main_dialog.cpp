// The story of the dialog: start-up, painting, and which part handles which event.

#include "dialog/main_dialog.h"

#include "dialog/choices/picture_menus.h"
#include "dialog/choices/picture_windows.h"
#include "dialog/controls/buttons.h"
#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/dialog_reading.h"
#include "dialog/controls/focus.h"
#include "dialog/controls/light_pads.h"
#include "dialog/controls/small_controls.h"
#include "dialog/dialog_commands.h"
#include "dialog/dialog_extras.h"
#include "dialog/dialog_mouse.h"
#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "dialog/preview/preview_area.h"
#include "dialog/undo.h"
#include "pictures/sources/scaled_pictures.h"
#include "services/alerts.h"
#include "services/memory_blocks.h"

constexpr int32_t kBackground = 239;  // bitmap
constexpr int32_t kShapeArrowPicture = 240;
constexpr int32_t kBlendSymbolPicture = 122;
constexpr int32_t kTallestMenu = 13 * 36;  // pixels at 100 percent, over the whole screen

// --- Painting -------------------------------------------------------------------------------

static bool touches(const Rectangle& a, const Rectangle& b) {
  return !isEmptyRect(intersectRects(a, b));
}

static void paintEverything(DialogState* dialog) {
  const EffectSettings* settings = settingsOf(dialog);
  if (settings->hostDrawsPreview == 1 && touches(dialog->canvas.clip, controlRect(kPreviewArea))) {
    drawPreview(dialog, /*erase=*/true);
  }
  drawLightPad(dialog, kLight1Pad);
  drawLightPad(dialog, kLight2Pad);
  for (const Slider& slider : kSliders) drawSlider(dialog, slider.id);
  drawToggle(dialog, kCausticToggle, settings->iriTableChoice == 1 ? 1 : 0);
  drawToggle(dialog, kAutoPreviewToggle, settings->autoPreview == 1 ? 1 : 0);
  drawTextureSample(dialog, /*withFrame=*/true);
  for (const Slider& slider : kSliders) drawValue(dialog, slider.valueArea);
  for (int32_t i = 0; i < kLabelCount; ++i) drawLabel(dialog, kLabels[i].id);
  for (const Picker& picker : kPickers) drawPicker(dialog, picker.id);
  drawFocusMark(dialog);
}

static void eraseBackground(DialogState* dialog) {
  Canvas* canvas = &dialog->canvas;
  fillArea(canvas, scaled({0, 0, kDialogHeight, kDialogWidth}), kWhite);
  drawResource(canvas, kBackground, 0, 0);
  const Rectangle arrow = controlRect(kShapeArrow);
  drawResource(canvas, kShapeArrowPicture, arrow.left, arrow.top);
  const Rectangle symbol = controlRect(kBlendSymbol);
  drawResource(canvas, kBlendSymbolPicture, symbol.left, symbol.top);
}

static void redrawButtons(DialogState* dialog, const Rectangle& area) {
  for (int32_t i = 0; i < kMainDialog.controlCount; ++i) {
    const WindowControl& control = kMainDialog.controls[i];
    if (control.kind == ControlKind::button && touches(controlRect(control.id), area)) {
      redrawItem(dialog->window, control.id);
    }
  }
}

void presentArea(DialogState* dialog, const Rectangle& area) {
  if (dialog->shown) presentPixels(dialog->window, dialog->canvas.target, area);
}

void repaintArea(DialogState* dialog, const Rectangle& area) {
  if (!dialog->shown) return;
  const Rectangle whole = scaled({0, 0, kDialogHeight, kDialogWidth});
  dialog->canvas.clip = intersectRects(area, whole);
  eraseBackground(dialog);
  paintEverything(dialog);
  dialog->canvas.clip = whole;
  presentArea(dialog, area);
  redrawButtons(dialog, area);
}

// A control with the pixels that it draws around its rectangle.
void repaintControl(DialogState* dialog, int32_t id) {
  Rectangle area = controlRect(id == kEnvironmentButton ? kEnvironmentFrame : id);
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  const int32_t around = scaled(2);
  area = {side(area.top - around), side(area.left - around), side(area.bottom + around),
          side(area.right + around)};
  repaintArea(dialog, area);
}

// An item draws within its own area: what went beyond would stay.
static void drawItem(DialogState* dialog, int32_t id, const ItemState& state) {
  const EffectSettings* settings = settingsOf(dialog);
  const Rectangle area = controlRect(id == kEnvironmentButton ? kEnvironmentFrame : id);
  const Rectangle clip = dialog->canvas.clip;
  dialog->canvas.clip = area;
  switch (id) {
    case kCancelButton:
      drawTextButton(dialog, id, "Cancel", state);
      break;
    case kOkButton:
      drawTextButton(dialog, id, "OK", state);
      break;
    case kZoomInButton:
      drawTextButton(dialog, id, "+", state);
      break;
    case kZoomOutButton:
      drawTextButton(dialog, id, "-", state);
      break;
    case kZoomButton:
      drawZoomPercentage(dialog, state);
      break;
    case kEnvironmentButton:
      drawEnvironmentThumbnail(dialog, state);
      break;
    case kLight1Button:
      drawColourButton(dialog, id, settings->light1Color, state);
      break;
    case kLight2Button:
      drawColourButton(dialog, id, settings->light2Color, state);
      break;
    case kTarnishButton:
      drawColourButton(dialog, id, settings->tarnishColor, state);
      break;
    default:
      drawPictureButton(dialog, id, state);
      break;
  }
  dialog->canvas.clip = clip;
  presentArea(dialog, area);
}

// --- Start-up -------------------------------------------------------------------------------

static void startUp(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  setAlertParameters("*", "**", "***", "****");
  for (uint8_t& enabled : dialog->session->dialog.controlEnabled) enabled = 1;
  settings->previewMode = 1;
  settings->dragControl = kNoControl;
  dialog->snapshot.settings = *settings;
  setControlRanges(dialog);
  loadControls(dialog, /*redrawPictures=*/true);
  readControls(dialog);
  settings->previousTextureChoice = settings->textureChoice;
  startUndo(dialog);
  startPreview(dialog);
  dialog->shown = true;
  updateZoomButtons(dialog);
  repaintArea(dialog, scaled({0, 0, kDialogHeight, kDialogWidth}));
}

static bool handleEvent(Window* window, const WindowEvent& event, void* context) {
  auto* dialog = static_cast<DialogState*>(context);
  switch (event.kind) {
    case WindowEventKind::initialise:
      dialog->window = window;
      startUp(dialog);
      return true;
    case WindowEventKind::drawItem:
      if (event.state.focused) buttonHasFocus(dialog, event.id);
      drawItem(dialog, event.id, event.state);
      return true;
    case WindowEventKind::use:
      useArea(dialog, event.id);
      return true;
    case WindowEventKind::set:
      setFromOutside(dialog, event.id, event.amount);
      return true;
    case WindowEventKind::rest:
      renderAtRest(dialog);
      return true;
    case WindowEventKind::command:
      handleCommand(dialog, event.id, event.notification);
      return true;
    case WindowEventKind::buttonDown:
      handlePress(dialog, event.point);
      return true;
    case WindowEventKind::mouseMove:
      handleMove(dialog, event.point);
      return true;
    case WindowEventKind::buttonUp:
      handleRelease(dialog, event.point);
      return true;
    default:
      return handleExtra(dialog, event);
  }
}

static DialogState* newDialog(SessionRecord* session) {
  auto* dialog = static_cast<DialogState*>(newModuleBlock(sizeof(DialogState)));
  if (dialog == nullptr) return nullptr;
  dialog->session = session;
  PixelTarget* target = &dialog->canvas.target;
  *target = {scaled(kDialogWidth), scaled(kDialogHeight), nullptr};
  target->rgb = static_cast<uint8_t*>(newModuleBlock(
      uint64_t{3} * static_cast<uint32_t>(target->width) * static_cast<uint32_t>(target->height)));
  dialog->canvas.clip = scaled({0, 0, kDialogHeight, kDialogWidth});
  if (target->rgb != nullptr) return dialog;
  freeModuleBlock(dialog);
  return nullptr;
}

bool showMainDialog(SessionRecord* session, void* ownerWindow) {
  setDialogScale(chooseScale(ownerWindow, kDialogWidth, kDialogHeight, kTallestMenu));
  DialogState* dialog = newDialog(session);
  int32_t answer = kDialogUnavailable;
  if (dialog != nullptr) {
    const WindowTemplate content = scaledTemplate(kMainDialog, dialog->controls);
    answer = runModalWindow(content, ownerWindow, handleEvent, dialog);
    endUndo(dialog);
    forgetSource(dialog);
    freeModuleBlock(dialog->canvas.target.rgb);
    freeModuleBlock(dialog->popupCanvas.target.rgb);
    freeModuleBlock(dialog);
  }
  forgetScaledPictures();
  if (answer == kDialogUnavailable) *session->result = kUserCanceled;
  return answer == kOkButton;
}
