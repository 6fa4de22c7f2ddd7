#include "settings/settings_validation.h"

#include "entry/handles.h"
#include "entry/load_mark.h"
#include "entry/session_record.h"
#include "persistence/settings_file.h"
#include "settings/settings_defaults.h"

// What a kept block must not be trusted with: pointers of an earlier load, and paths whose zero
// byte got lost.
static void mendKeptBlock(EffectSettings* settings) {
  settings->texturePath[kPathBytes - 1] = 0;
  settings->environmentPath[kPathBytes - 1] = 0;
  settings->pictureFolder[kPathBytes - 1] = 0;
  if (settings->loadMark == loadMark()) return;
  settings->environmentPicture = nullptr;
  settings->texturePicture = nullptr;
  settings->environmentRef = nullptr;
  settings->textureRef = nullptr;
  settings->loadMark = loadMark();
}

bool lockSettings(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  const Handle handle = filter->parameters;
  if (handle == nullptr || session->lockedSettings == handle) return true;
  if (!handleMayHold(filter, handle, sizeof(EffectSettings))) {
    filter->parameters = nullptr;
    return true;
  }
  if (lockHandle(filter, handle, /*moveHigh=*/true) == nullptr || *handle == nullptr) {
    filter->parameters = nullptr;
    *session->result = kMemoryFull;
    return false;
  }
  session->lockedSettings = handle;
  mendKeptBlock(settingsOf(session));
  return true;
}

void unlockSettings(SessionRecord* session) {
  if (session->lockedSettings != nullptr) unlockHandle(session->filter, session->lockedSettings);
  session->lockedSettings = nullptr;
}

void validateSettings(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  if (!lockSettings(session) || filter->parameters != nullptr) return;
  Handle handle = newHandle(filter, sizeof(EffectSettings));
  if (handle == nullptr || lockHandle(filter, handle, /*moveHigh=*/true) == nullptr ||
      *handle == nullptr) {
    if (handle != nullptr) disposeHandle(filter, handle);
    *session->result = kMemoryFull;
    return;
  }
  filter->parameters = handle;
  session->lockedSettings = handle;
  EffectSettings* settings = settingsOf(session);
  fillDefaultSettings(settings);
  settings->loadMark = loadMark();
  session->shading.tablesBuilt = 0;
  loadCachedSettings(session);
}
