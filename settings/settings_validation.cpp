#include "settings/settings_validation.h"

#include "entry/handles.h"
#include "entry/load_mark.h"
#include "entry/session_record.h"
#include "persistence/settings_file.h"
#include "settings/settings_defaults.h"

static void dropDeadPointers(EffectSettings* settings) {
  if (settings->loadMark == loadMark()) return;
  settings->environmentPicture = nullptr;
  settings->texturePicture = nullptr;
  settings->environmentRef = nullptr;
  settings->textureRef = nullptr;
  settings->loadMark = loadMark();
}

void validateSettings(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  const Handle kept = filter->parameters;
  if (kept != nullptr && *kept != nullptr && handleMayHold(filter, kept, sizeof(EffectSettings))) {
    return dropDeadPointers(settingsOf(session));
  }
  Handle handle = newHandle(filter, sizeof(EffectSettings));
  if (handle == nullptr || *handle == nullptr) {
    filter->parameters = nullptr;
    *session->result = kMemoryFull;
    return;
  }
  filter->parameters = handle;
  EffectSettings* settings = settingsOf(session);
  fillDefaultSettings(settings);
  settings->loadMark = loadMark();
  session->shading.tablesBuilt = 0;
  loadCachedSettings(session);
}
