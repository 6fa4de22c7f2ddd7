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

// Locks the handle for this call; false when the host cannot.
static bool holdSettings(SessionRecord* session, Handle handle) {
  const void* block = lockHandle(session->filter, handle, /*moveHigh=*/true);
  if (block == nullptr || *handle == nullptr) {
    if (block != nullptr) unlockHandle(session->filter, handle);
    *session->result = kMemoryFull;
    return false;
  }
  session->lockedSettings = handle;
  session->settings = static_cast<EffectSettings*>(*handle);
  return true;
}

bool lockSettings(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  const Handle handle = filter->parameters;
  if (handle == nullptr || session->lockedSettings == handle) return true;
  if (!handleMayHold(filter, handle, sizeof(EffectSettings))) {
    // Left by another version of the module, which the host did not tell apart from this one.
    filter->parameters = nullptr;
    // One of the module's own is something else that has got the number of a dead block.
    if (!isModuleHandle(handle)) disposeHandle(filter, handle);
    return true;
  }
  if (!holdSettings(session, handle)) return false;
  mendKeptBlock(session->settings);
  return true;
}

void unlockSettings(SessionRecord* session) {
  if (session->lockedSettings != nullptr) unlockHandle(session->filter, session->lockedSettings);
  session->lockedSettings = nullptr;
  session->settings = nullptr;
}

void validateSettings(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  if (!lockSettings(session) || filter->parameters != nullptr) return;
  const Handle handle = newHandle(filter, sizeof(EffectSettings));
  if (handle == nullptr) {
    *session->result = kMemoryFull;
    return;
  }
  if (!holdSettings(session, handle)) return disposeHandle(filter, handle);
  filter->parameters = handle;
  EffectSettings* settings = settingsOf(session);
  fillDefaultSettings(settings);
  settings->loadMark = loadMark();
  session->shading.tablesBuilt = 0;
  loadCachedSettings(session);
}
