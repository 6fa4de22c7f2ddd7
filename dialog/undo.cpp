#include "dialog/undo.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "dialog/dialog_state.h"
#include "pictures/picture_surface.h"
#include "platform/clock.h"
#include "services/memory_blocks.h"
#include "settings/light_angles.h"
#include "settings/setting_fields.h"

// --- Settings -------------------------------------------------------------------------------

static bool sameSetting(const EffectSettings& a, const EffectSettings& b,
                        const SettingRange& range) {
  double valuesA[3];
  double valuesB[3];
  readSetting(a, range, valuesA);
  readSetting(b, range, valuesB);
  return std::equal(std::begin(valuesA), std::end(valuesA), valuesB);
}

static bool samePath(const char* a, const char* b) {
  return std::strncmp(a, b, kPathBytes) == 0;
}

static bool sameUserSettings(const EffectSettings& a, const EffectSettings& b) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    if (!sameSetting(a, b, kSettingRanges[i])) return false;
  }
  return samePath(a.environmentPath, b.environmentPath) && samePath(a.texturePath, b.texturePath);
}

// What the user sets, and what goes with the pictures.
static void takeUserSettings(EffectSettings* settings, const EffectSettings& wanted) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    double values[3];
    readSetting(wanted, kSettingRanges[i], values);
    writeSetting(settings, kSettingRanges[i], values);
  }
  std::memcpy(settings->environmentPath, wanted.environmentPath, kPathBytes);
  std::memcpy(settings->texturePath, wanted.texturePath, kPathBytes);
  std::memcpy(settings->proceduralTexture, wanted.proceduralTexture,
              sizeof(settings->proceduralTexture));
  settings->proceduralTextureVariant = wanted.proceduralTextureVariant;
  settings->textureSeed = wanted.textureSeed;
  settings->textureWidth = wanted.textureWidth;
  settings->textureHeight = wanted.textureHeight;
  settings->previousTextureChoice = wanted.textureChoice;
  lightAngles(settings);
}

// --- Pictures -------------------------------------------------------------------------------

static size_t bytesOf(const PictureSurface& surface) {
  return static_cast<size_t>(kSurfaceBytesPerPixel) * static_cast<size_t>(surface.width) *
         static_cast<size_t>(surface.height);
}

// A step without memory for a picture has nothing to differ from.
static bool differs(const PictureSurface* surface, const uint8_t* pixels) {
  return surface != nullptr && pixels != nullptr &&
         std::memcmp(pixels, surface->rgb, bytesOf(*surface)) != 0;
}

// `before` itself where the picture is still the same.
static uint8_t* pixelsNow(const PictureSurface* surface, uint8_t* before) {
  if (surface == nullptr) return nullptr;
  if (before != nullptr && !differs(surface, before)) return before;
  const size_t bytes = bytesOf(*surface);
  auto* pixels = static_cast<uint8_t*>(newModuleBlock(bytes));
  if (pixels != nullptr) std::memcpy(pixels, surface->rgb, bytes);
  return pixels;
}

static void putPixelsBack(const PictureSurface* surface, const uint8_t* pixels) {
  if (surface != nullptr && pixels != nullptr) {
    std::memcpy(surface->rgb, pixels, bytesOf(*surface));
  }
}

// --- History --------------------------------------------------------------------------------

static void storeStep(DialogState* dialog, const EffectSettings& shown) {
  UndoHistory* undo = &dialog->undo;
  const UndoStep before = undo->position > 0 ? undo->steps[undo->position - 1] : UndoStep{};
  UndoStep* step = &undo->steps[undo->position];
  step->settings = shown;
  step->environment = pixelsNow(shown.environmentPicture, before.environment);
  step->texture = pixelsNow(shown.texturePicture, before.texture);
  undo->count = undo->position + 1;
}

// Frees the pictures of a step that the other one does not share.
static void freePictures(const UndoStep& step, const UndoStep& other) {
  if (step.environment != other.environment) freeModuleBlock(step.environment);
  if (step.texture != other.texture) freeModuleBlock(step.texture);
}

// Drops the steps from one on, of which the step before may share pictures.
static void dropStepsFrom(UndoHistory* undo, int32_t first) {
  while (undo->count > first) {
    --undo->count;
    freePictures(undo->steps[undo->count],
                 undo->count > 0 ? undo->steps[undo->count - 1] : UndoStep{});
  }
}

void startUndo(DialogState* dialog) {
  dialog->undo.position = 0;
  storeStep(dialog, *settingsOf(dialog));
}

void endUndo(DialogState* dialog) {
  dropStepsFrom(&dialog->undo, 0);
}

// A texture that is chosen once more is generated anew.
static bool isStep(const UndoStep& step, const EffectSettings& shown) {
  return sameUserSettings(step.settings, shown) &&
         !differs(shown.environmentPicture, step.environment) &&
         !differs(shown.texturePicture, step.texture);
}

void endChange(DialogState* dialog) {
  dialog->undo.last = {};
}

static bool continuesLast(const UndoHistory& undo, const Change& change) {
  const bool same = change.kind == undo.last.kind && change.control == undo.last.control;
  const bool soon =
      change.kind != ChangeKind::steps || millisecondsNow() - undo.lastTime <= kStepPause;
  return change.continues && same && soon && undo.position > 0 && undo.position + 1 == undo.count;
}

void noteChange(DialogState* dialog, const EffectSettings& shown, const Change& change) {
  UndoHistory* undo = &dialog->undo;
  const bool continues = continuesLast(*undo, change);
  endChange(dialog);
  if (isStep(undo->steps[undo->position], shown)) return;
  if (continues) {
    dropStepsFrom(undo, undo->position);
    --undo->position;
    if (isStep(undo->steps[undo->position], shown)) return;  // there and back
  }
  undo->last = change;
  undo->lastTime = millisecondsNow();
  dropStepsFrom(undo, undo->position + 1);
  if (undo->position + 1 == kUndoSteps) {
    freePictures(undo->steps[0], undo->steps[1]);
    std::memmove(&undo->steps[0], &undo->steps[1], sizeof(undo->steps[0]) * (kUndoSteps - 1));
    --undo->position;
  }
  ++undo->position;
  storeStep(dialog, shown);
}

static void standAt(DialogState* dialog, int32_t position) {
  const UndoStep& wanted = dialog->undo.steps[position];
  EffectSettings* settings = settingsOf(dialog);
  dialog->undo.position = position;
  putPixelsBack(settings->environmentPicture, wanted.environment);
  putPixelsBack(settings->texturePicture, wanted.texture);
  takeUserSettings(settings, wanted.settings);
}

bool undoChange(DialogState* dialog) {
  if (dialog->undo.position == 0) return false;
  standAt(dialog, dialog->undo.position - 1);
  return true;
}

bool redoChange(DialogState* dialog) {
  if (dialog->undo.position + 1 >= dialog->undo.count) return false;
  standAt(dialog, dialog->undo.position + 1);
  return true;
}
