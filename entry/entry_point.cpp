// The main path: every call of a host comes in here and goes to one of six handlers.

#include "entry/entry_point.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "entry/handles.h"
#include "entry/load_mark.h"
#include "entry/selector_handlers.h"
#include "entry/session_record.h"
#include "services/floating_point_modes.h"
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
  unlockSettings(session);
}

// Handles of the session records made since the module was loaded. What else stands in a slot comes
// from an earlier load, as a number or as copied bytes, and may not even be looked at; nothing in a
// session record has to outlive its load.
constexpr int32_t kRememberedSessions = 16;
static Handle issuedSessions[kRememberedSessions];
static int32_t issuedCount = 0;

static bool wasIssued(Handle handle) {
  return std::find(std::begin(issuedSessions), std::end(issuedSessions), handle) !=
         std::end(issuedSessions);
}

static SessionRecord* keptSession(FilterRecord* filter, intptr_t slot, int16_t* result) {
  auto handle = reinterpret_cast<Handle>(slot);
  if (handle == nullptr || !wasIssued(handle)) return nullptr;
  if (!handleMayHold(filter, handle, sizeof(SessionRecord))) return nullptr;
  auto* session = static_cast<SessionRecord*>(lockHandle(filter, handle, /*moveHigh=*/true));
  if (session == nullptr) return nullptr;
  if (session->loadMark != loadMark()) {
    initialiseSession(session, filter, result);
  } else {
    enterSession(session, filter, result);
  }
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
  issuedSessions[issuedCount++ % kRememberedSessions] = handle;
  *slot = reinterpret_cast<intptr_t>(handle);
  return session;
}

static void runSelector(int16_t selector, SessionRecord* session) {
  if (selector < kSelectorParameters || selector > kSelectorFinish) {
    *session->result = kFilterBadParameters;
    return;
  }
  // The settings stay in place for the whole call, the dialog and all callbacks included.
  if (lockSettings(session)) kHandlers[selector - kSelectorParameters](session);
  unlockSettings(session);
}

static void enterModule(int16_t selector, void* parameterBlock, intptr_t* dataSlot,
                        int16_t* result) {
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
  runSelector(selector, session);
  unlockHandle(filter, reinterpret_cast<Handle>(*dataSlot));
}

void MORVALIS_CALL ENTRYPOINT(int16_t selector, void* parameterBlock, intptr_t* dataSlot,
                              int16_t* result) {
  if (result == nullptr) return;
  *result = kNoError;
  FloatingPointModes hostModes;
  enterDefaultModes(&hostModes);
  enterModule(selector, parameterBlock, dataSlot, result);
  restoreModes(hostModes);
}
