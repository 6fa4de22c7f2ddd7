// session_record: the state of one use of the filter, composed of one plain record per owner.
// The host keeps it between calls; every procedure receives it as its first argument.

#pragma once

#include <cstdint>

#include "entry/host_interface.h"
#include "geometry/pattern_state.h"
#include "geometry/render_state.h"
#include "settings/effect_settings.h"
#include "shading/shading_tables.h"

// The surfaces of the run. The settings point to them as well, but only these are trusted: hosts
// copy the settings' bytes and give them back.
struct SessionPictures {
  PictureSurface* environment;
  PictureSurface* texture;
};

// What the dialog leaves in the session between its procedures.
constexpr int32_t kDialogControls = 100;
struct SessionDialog {
  uint8_t controlEnabled[kDialogControls];  // by control id
};

struct SessionRecord {
  int16_t* result;       // the host's result word, 0 for success; fresh at every call
  FilterRecord* filter;  // the host's filter record; fresh at every call

  uint64_t loadMark;  // load of the module, and block, that the pointers in here belong to
  RenderState render;
  ShadingTables shading;
  PatternState pattern;
  SessionPictures pictures;
  SessionDialog dialog;
  Handle lockedSettings;     // parameter handle locked for the current call, null for none
  EffectSettings* settings;  // its block, which stays in place whatever the host does to the record
  int32_t busy;              // 1 while a call is inside
};

// Whether the render in progress is the dialog's preview.
inline bool isPreview(const EffectSettings* settings) {
  return settings->previewMode != 0;
}

// The settings in the host's parameter handle, as locked for this call; null while there are none.
inline EffectSettings* settingsOf(const SessionRecord* session) {
  return session->settings;
}
