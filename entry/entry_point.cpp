// The main path: every call of a host comes in here and goes to one of six handlers.

#include "entry/entry_point.h"

#include <atomic>
#include <cstring>

#include "entry/handles.h"
#include "entry/load_mark.h"
#include "entry/selector_handlers.h"
#include "entry/session_record.h"
#include "platform/current_thread.h"
#include "services/floating_point_modes.h"
#include "services/memory_blocks.h"
#include "settings/settings_validation.h"

// In order of the selectors, from Parameters on.
using SelectorHandler = void (*)(SessionRecord* session);
constexpr SelectorHandler kHandlers[] = {doParameters, doPrepare, doStart, doContinue, doFinish};

static void enterSession(SessionRecord* session, FilterRecord* filter, int16_t* result) {
  session->result = result;
  session->filter = filter;
  *result = kNoError;
}

// Of a block, too: the host may have copied another one's bytes to where one was issued before.
static uint64_t markOf(Handle handle) {
  return loadMark() ^ reinterpret_cast<uintptr_t>(handle);
}

static void initialiseSession(SessionRecord* session, Handle handle, FilterRecord* filter,
                              int16_t* result) {
  std::memset(session, 0, sizeof(*session));
  enterSession(session, filter, result);
  session->loadMark = markOf(handle);
  // A run whose dialog is never shown has to build its height field too.
  session->render.buildHeightField = 1;
  validateSettings(session);
  unlockSettings(session);
}

// Handles of the session records made since the module was loaded. What else stands in a slot comes
// from an earlier load, as a number or as copied bytes, and may not even be looked at; nothing in a
// session record has to outlive its load.
struct IssuedSession {
  Handle handle;
  IssuedSession* next;
};
static IssuedSession* issuedSessions = nullptr;

static bool wasIssued(Handle handle) {
  const IssuedSession* issued = issuedSessions;
  while (issued != nullptr && issued->handle != handle) issued = issued->next;
  return issued != nullptr;
}

// False without memory. A host may give an address a second time once it has freed it.
static bool rememberIssued(Handle handle) {
  if (wasIssued(handle)) return true;
  auto* issued = static_cast<IssuedSession*>(newModuleBlock(sizeof(IssuedSession)));
  if (issued == nullptr) return false;
  *issued = {handle, issuedSessions};
  issuedSessions = issued;
  return true;
}

static bool slotHoldsSession(const FilterRecord* filter, intptr_t slot) {
  auto handle = reinterpret_cast<Handle>(slot);
  return handle != nullptr && wasIssued(handle) &&
         handleMayHold(filter, handle, sizeof(SessionRecord));
}

// Null when it cannot be locked: the slot keeps it for the next call.
static SessionRecord* keptSession(FilterRecord* filter, intptr_t slot, int16_t* result) {
  auto handle = reinterpret_cast<Handle>(slot);
  auto* session = static_cast<SessionRecord*>(lockHandle(filter, handle, /*moveHigh=*/true));
  if (session == nullptr) return nullptr;
  if (session->loadMark != markOf(handle)) {
    initialiseSession(session, handle, filter, result);
  } else {
    enterSession(session, filter, result);
  }
  return session;
}

static SessionRecord* newSession(FilterRecord* filter, intptr_t* slot, int16_t* result) {
  Handle handle = newHandle(filter, sizeof(SessionRecord));
  if (handle == nullptr) return nullptr;
  void* block = rememberIssued(handle) ? lockHandle(filter, handle, /*moveHigh=*/true) : nullptr;
  auto* session = static_cast<SessionRecord*>(block);
  if (session == nullptr) {
    disposeHandle(filter, handle);
    return nullptr;
  }
  initialiseSession(session, handle, filter, result);
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

// A session and the host's callbacks serve one call at a time. A thread that comes in while another
// one is inside is sent away; one that comes in again, out of a callback, is let in to other
// sessions.
static std::atomic<uintptr_t> threadInside = 0;
static int32_t callsInside = 0;  // of that thread

// Whether the call comes out of a callback of another one for the same session, which the host
// waits for: the session is locked, and its settings are in use.
static bool isBusy(intptr_t slot) {
  const auto handle = reinterpret_cast<Handle>(slot);
  const auto* session = static_cast<const SessionRecord*>(*handle);
  return session != nullptr && session->loadMark == markOf(handle) && session->busy != 0;
}

static void enterModule(int16_t selector, void* parameterBlock, intptr_t* dataSlot,
                        int16_t* result) {
  if (selector == kSelectorAbout) return doAbout(static_cast<AboutRecord*>(parameterBlock));
  auto* filter = static_cast<FilterRecord*>(parameterBlock);
  if (filter == nullptr || dataSlot == nullptr) {
    *result = kFilterBadParameters;
    return;
  }
  const bool kept = slotHoldsSession(filter, *dataSlot);
  if (kept && callsInside > 1 && isBusy(*dataSlot)) {
    *result = kFilterBadParameters;
    return;
  }
  SessionRecord* session =
      kept ? keptSession(filter, *dataSlot, result) : newSession(filter, dataSlot, result);
  if (session == nullptr) {
    *result = kMemoryFull;
    return;
  }
  // The host may put something else into its slot before the call has ended.
  const auto handle = reinterpret_cast<Handle>(*dataSlot);
  session->busy = 1;
  runSelector(selector, session);
  session->busy = 0;
  unlockHandle(filter, handle);
}

static bool beginCall() {
  const uintptr_t thread = currentThread();
  uintptr_t nobody = 0;
  if (threadInside.load() != thread && !threadInside.compare_exchange_strong(nobody, thread)) {
    return false;
  }
  ++callsInside;
  return true;
}

static void endCall() {
  if (--callsInside == 0) threadInside.store(0);
}

void MORVALIS_CALL ENTRYPOINT(int16_t selector, void* parameterBlock, intptr_t* dataSlot,
                              int16_t* result) {
  if (result == nullptr) return;
  if (!beginCall()) {
    *result = kFilterBadParameters;
    return;
  }
  *result = kNoError;
  FloatingPointModes hostModes;
  enterDefaultModes(&hostModes);
  enterModule(selector, parameterBlock, dataSlot, result);
  restoreModes(hostModes);
  endCall();
}
