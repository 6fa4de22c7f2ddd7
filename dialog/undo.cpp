#include "dialog/undo.h"

#include <cstring>

#include "dialog/dialog_state.h"
#include "pictures/environment_picture.h"
#include "pictures/rip_map.h"
#include "pictures/texture_picture.h"
#include "pictures/texture_preparation.h"
#include "settings/light_angles.h"
#include "settings/setting_ranges.h"

static size_t sizeOfForm(SettingForm form) {
  switch (form) {
    case SettingForm::direction:
      return sizeof(Direction);
    case SettingForm::color:
      return sizeof(Color16);
    default:
      return sizeof(int32_t);
  }
}

void copyUserSettings(EffectSettings* target, const EffectSettings& source) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    std::memcpy(reinterpret_cast<char*>(target) + range.offset,
                reinterpret_cast<const char*>(&source) + range.offset, sizeOfForm(range.form));
  }
}

static bool samePath(const char* a, const char* b) {
  return std::strncmp(a, b, kPathBytes) == 0;
}

static bool sameUserSettings(const EffectSettings& a, const EffectSettings& b) {
  EffectSettings copy = a;
  copyUserSettings(&copy, b);
  return std::memcmp(&copy, &a, sizeof(copy)) == 0 &&
         samePath(a.environmentPath, b.environmentPath) && samePath(a.texturePath, b.texturePath);
}

void startUndo(DialogState* dialog) {
  dialog->undo.steps[0] = *settingsOf(dialog);
  dialog->undo.count = 1;
  dialog->undo.position = 0;
}

void noteChange(DialogState* dialog) {
  UndoHistory* undo = &dialog->undo;
  if (sameUserSettings(undo->steps[undo->position], *settingsOf(dialog))) return;
  if (undo->position + 1 == kUndoSteps) {
    std::memmove(&undo->steps[0], &undo->steps[1], sizeof(undo->steps[0]) * (kUndoSteps - 1));
    --undo->position;
  }
  ++undo->position;
  undo->steps[undo->position] = *settingsOf(dialog);
  undo->count = undo->position + 1;
}

// The environment as it was: another file, or the same one turned back.
static void bringEnvironmentBack(DialogState* dialog, const EffectSettings& wanted) {
  EffectSettings* settings = settingsOf(dialog);
  if (settings->environmentPicture == nullptr) return;
  const int32_t turns = ((wanted.environmentTurns - settings->environmentTurns) % 4 + 4) % 4;
  if (!samePath(settings->environmentPath, wanted.environmentPath)) {
    std::memcpy(settings->environmentPath, wanted.environmentPath, kPathBytes);
    settings->environmentTurns = wanted.environmentTurns;
    loadEnvironmentPicture(dialog->session, settings->environmentPath);
    return applyEnvironmentTurns(dialog->session);
  }
  for (int32_t i = 0; i < turns; ++i) rotateEnvironmentQuarter(settings->environmentPicture);
  buildEnvironmentRipMap(dialog->session);
}

static void bringTextureBack(DialogState* dialog, const EffectSettings& wanted) {
  EffectSettings* settings = settingsOf(dialog);
  const bool otherFile = !samePath(settings->texturePath, wanted.texturePath);
  const bool otherChoice = settings->textureChoice != wanted.textureChoice;
  if (!otherFile && !otherChoice) return;
  std::memcpy(settings->texturePath, wanted.texturePath, kPathBytes);
  settings->textureChoice = wanted.textureChoice;
  if (wanted.textureChoice == kTextureChoiceFile) {
    loadTexturePicture(dialog->session, settings->texturePath);
  } else {
    prepareTexture(dialog->session);
  }
}

static void standAt(DialogState* dialog, int32_t position) {
  const EffectSettings& wanted = dialog->undo.steps[position];
  dialog->undo.position = position;
  bringEnvironmentBack(dialog, wanted);
  bringTextureBack(dialog, wanted);
  copyUserSettings(settingsOf(dialog), wanted);
  lightAngles(settingsOf(dialog));
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
