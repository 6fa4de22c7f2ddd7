// The main path: every call of a host comes in here and goes to one of six handlers.

#include "entry/entry_point.h"

#include <cstring>

#include "entry/handles.h"
#include "entry/load_mark.h"
#include "entry/selector_handlers.h"
#include "entry/session_record.h"
#include "settings/settings_validation.h"

// In order of the selectors, from Parameters on.
using SelectorHandler = void (*)(SessionRecord* session);
constexpr SelectorHandler kHandlers[] = {doParameters, doPrepare, doStart, doContinue, doFinish};

static void enterSession(SessionRecord* session, FilterRecord* filter, int16_t* result) {
  session->result = result;
  session->filter = filter;
  *result = kNoError;
}

static void initialiseSession(SessionRecord* session, FilterRecord* filter, int16_t* result) {
  std::memset(session, 0, sizeof(*session));
  enterSession(session, filter, result);
  session->loadMark = loadMark();
  // A run whose dialog is never shown has to build its height field too.
  session->render.buildHeightField = 1;
  validateSettings(session);
}

// A record that comes back from another load of the module keeps its values; the blocks it points
// to went with that load.
static void dropDeadPointers(SessionRecord* session) {
  if (session->loadMark == loadMark()) return;
  RenderState* render = &session->render;
  render->lineBuffer = {};
  render->heightField = {};
  render->coneKernel = {};
  render->edgeKernel = {};
  render->environmentTable = {};
  render->textureTable = {};
  render->running = 0;
  session->pictures = {};
  session->loadMark = loadMark();
}

static SessionRecord* keptSession(FilterRecord* filter, intptr_t slot, int16_t* result) {
  auto handle = reinterpret_cast<Handle>(slot);
  if (handle == nullptr || !handleMayHold(filter, handle, sizeof(SessionRecord))) return nullptr;
  auto* session = static_cast<SessionRecord*>(lockHandle(filter, handle, /*moveHigh=*/true));
  if (session == nullptr) return nullptr;
  enterSession(session, filter, result);
  dropDeadPointers(session);
  return session;
}

static SessionRecord* newSession(FilterRecord* filter, intptr_t* slot, int16_t* result) {
  Handle handle = newHandle(filter, sizeof(SessionRecord));
  if (handle == nullptr) return nullptr;
  auto* session = static_cast<SessionRecord*>(lockHandle(filter, handle, /*moveHigh=*/true));
  if (session == nullptr) {
    disposeHandle(filter, handle);
    return nullptr;
  }
  initialiseSession(session, filter, result);
  *slot = reinterpret_cast<intptr_t>(handle);
  return session;
}

void MORVALIS_CALL ENTRYPOINT(int16_t selector, void* parameterBlock, intptr_t* dataSlot,
                              int16_t* result) {
  if (result == nullptr) return;
  *result = kNoError;
  if (selector == kSelectorAbout) return doAbout(static_cast<AboutRecord*>(parameterBlock));
  auto* filter = static_cast<FilterRecord*>(parameterBlock);
  if (filter == nullptr || dataSlot == nullptr) {
    *result = kFilterBadParameters;
    return;
  }
  SessionRecord* session = keptSession(filter, *dataSlot, result);
  if (session == nullptr) session = newSession(filter, dataSlot, result);
  if (session == nullptr) {
    *result = kMemoryFull;
    return;
  }
  if (selector >= kSelectorParameters && selector <= kSelectorFinish) {
    kHandlers[selector - kSelectorParameters](session);
  } else {
    *result = kFilterBadParameters;
  }
  unlockHandle(filter, reinterpret_cast<Handle>(*dataSlot));
}
