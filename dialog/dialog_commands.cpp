#include "dialog/dialog_commands.h"

#include "dialog/choices/colour_choice.h"
#include "dialog/choices/picture_menus.h"
#include "dialog/choices/picture_windows.h"
#include "dialog/controls/dialog_controls.h"
#include "dialog/dialog_state.h"
#include "dialog/preview/preview_area.h"
#include "dialog/randomize.h"
#include "dialog/undo.h"
#include "persistence/settings_file.h"
#include "pictures/environment_picture.h"
#include "pictures/rip_map.h"
#include "pictures/texture_preparation.h"

constexpr int16_t kConfirmedAmount = 50;
constexpr int16_t kCancelledAmount = 1;
constexpr char kLightPrompt[] = "Choose the light's color";
constexpr char kTarnishPrompt[] = "Choose the tarnish color";

static void confirm(DialogState* dialog) {
  settingsOf(dialog)->constantOne = 1;
  readControls(dialog);
  *dialog->session->result = kNoError;
  endModalWindow(dialog->window, kOkButton);
}

// These fields and no others: texture size and offsets, the pictures chosen and the preview's
// place survive a Cancel.
static void restoreSnapshot(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  const EffectSettings& kept = dialog->snapshot.settings;
  settings->light1Dir = kept.light1Dir;
  settings->light2Dir = kept.light2Dir;
  settings->texture = kept.texture;
  settings->reflection = kept.reflection;
  settings->height = kept.height;
  settings->radius = kept.radius;
  settings->textureChoice = kept.textureChoice;
  settings->blendMode = kept.blendMode;
  settings->environmentTurns = kept.environmentTurns;
  settings->variant = kept.variant;
  settings->shape = kept.shape;
  settings->gloss = kept.gloss;
  settings->glare = kept.glare;
  settings->constantOne = kept.constantOne;
  settings->autoPreview = kept.autoPreview;
  settings->iriTableChoice = kept.iriTableChoice;
  settings->iriColors = kept.iriColors;
  settings->iridescence = kept.iridescence;
  settings->tarnish = kept.tarnish;
  settings->light1Color = kept.light1Color;
  settings->light2Color = kept.light2Color;
  settings->tarnishColor = kept.tarnishColor;
  settings->glassiness = kept.glassiness;
  settings->caustic = kept.caustic;
  settings->textureWidth = kept.textureWidth;
  settings->textureHeight = kept.textureHeight;
}

static void cancel(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  restoreSnapshot(dialog);
  settings->scriptAmount = kCancelledAmount;
  settings->scriptMood = 0;
  settings->scriptEntire = 0;
  *dialog->session->result = kUserCanceled;
  endModalWindow(dialog->window, kCancelButton);
}

static void openEnvironment(DialogState* dialog) {
  if (!openEnvironmentPicture(dialog)) return;
  if (settingsOf(dialog)->reflection == 0) {
    // A picture that nothing mirrors would not be seen.
    dialog->controlValue[kReflectionSlider] = 100;
    repaintControl(dialog, kReflectionSlider);
    repaintControl(dialog, findSlider(kReflectionSlider)->valueArea);
  }
  repaintControl(dialog, kEnvironmentButton);
  refreshPreview(dialog);
}

static void changeColour(DialogState* dialog, int32_t id, const char* prompt, Color16* colour) {
  chooseColor(dialog, prompt, colour);
  repaintControl(dialog, id);
  refreshPreview(dialog);
}

// Zooming renders whatever "Auto preview" says.
static void renderZoomed(DialogState* dialog) {
  readControls(dialog);
  renderPreview(dialog);
}

static void spin(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  if (settings->environmentPicture != nullptr) {
    rotateEnvironmentQuarter(settings->environmentPicture);
    buildEnvironmentRipMap(dialog->session);
  }
  settings->environmentTurns = static_cast<int32_t>((int64_t{settings->environmentTurns} + 1) % 4);
  repaintControl(dialog, kEnvironmentButton);
  refreshPreview(dialog);
}

// What is saved is what the controls show.
static void save(DialogState* dialog) {
  const EffectSettings shown = shownSettings(dialog);
  savePreset(&shown);
}

static void load(DialogState* dialog) {
  if (!openPreset(dialog->session)) return;
  loadControls(dialog, /*redrawPictures=*/true);
  repaintControl(dialog, kAutoPreviewToggle);
  refreshPreview(dialog);
}

static void setTextureChoice(DialogState* dialog, int32_t choice) {
  settingsOf(dialog)->textureChoice = choice;
  dialog->controlValue[kTexturePicker] = choice;
  repaintControl(dialog, kTexturePicker);
}

void settleTextureFile(DialogState* dialog, bool taken) {
  EffectSettings* settings = settingsOf(dialog);
  if (taken) {
    setTextureChoice(dialog, kTextureChoiceFile);
    settings->previousTextureChoice = kTextureChoiceFile;
  } else {
    setTextureChoice(dialog, settings->previousTextureChoice);
  }
}

static void chooseTexture(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  prepareTexture(dialog->session);
  if (settings->textureChoice == kTextureChoiceFile) {
    const bool taken = openTexturePicture(dialog);
    if (taken) {
      settings->textureOffsetX = 0;
      settings->textureOffsetY = 0;
    }
    settleTextureFile(dialog, taken);
    repaintControl(dialog, kTextureFrame);
    return;
  }
  settings->textureOffsetX = 0;
  settings->textureOffsetY = 0;
  settings->previousTextureChoice = settings->textureChoice;
  repaintControl(dialog, kTextureFrame);
}

static void chooseFromMenu(DialogState* dialog, int32_t command) {
  const int32_t picker = choiceFromCommand(dialog, command);
  if (picker == 0) return;
  readControls(dialog);
  for (const Picker& row : kPickers) repaintControl(dialog, row.id);
  if (picker == kTexturePicker) chooseTexture(dialog);
  refreshPreview(dialog);
}

void handleCommand(DialogState* dialog, int32_t id, int32_t notification) {
  EffectSettings* settings = settingsOf(dialog);
  settings->scriptAmount = kConfirmedAmount;
  if (notification != 0) return;
  if (id != kCancelButton) takeTyping(dialog);
  if (id >= kFirstMenuCommand) return chooseFromMenu(dialog, id);
  switch (id) {
    case kOkButton:
      return confirm(dialog);
    case kCancelButton:
      return cancel(dialog);
    case kEnvironmentButton:
      return openEnvironment(dialog);
    case kLight1Button:
      return changeColour(dialog, id, kLightPrompt, &settings->light1Color);
    case kLight2Button:
      return changeColour(dialog, id, kLightPrompt, &settings->light2Color);
    case kTarnishButton:
      return changeColour(dialog, id, kTarnishPrompt, &settings->tarnishColor);
    case kZoomInButton:
      if (settings->previewScale < 2) return;
      zoomIn(dialog);
      return renderZoomed(dialog);
    case kZoomOutButton:
      if (settings->previewScale == dialog->fitScale) return;
      zoomOut(dialog);
      return renderZoomed(dialog);
    case kZoomButton:
      zoomToFull(dialog);
      return renderZoomed(dialog);
    case kSaveButton:
      return save(dialog);
    case kLoadButton:
      return load(dialog);
    case kSpinButton:
      return spin(dialog);
    case kRandomizeButton:
      randomizeSettings(dialog->session);
      loadControls(dialog, /*redrawPictures=*/false);
      return refreshPreview(dialog);
    default:
      return;
  }
}
