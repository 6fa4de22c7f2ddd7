// Plays in the windows of a run, from a second thread.

#include <gtest/gtest.h>

#include "hosts/substitute_host/host_state.h"
#include "hosts/windows_host/context_drawing.h"
#include "hosts/windows_host/kept_values.h"
#include "platform/clock.h"
#include "platform/windows/window/window_record.h"
#include "tests/support/dialog/dialog_answers.h"
#include "tests/support/dialog/dialog_user.h"
#include "tests/windows_scripts/script_answers.h"
#include "tests/windows_scripts/script_window.h"

// --- The clock, in place of the back end's --------------------------------------------------

static uint32_t passed = 1;

uint32_t secondsNow() {
  return 1;
}

uint32_t millisecondsNow() {
  return passed;
}

void passMilliseconds(unsigned time) {
  passed += time;
}

// --- Playing --------------------------------------------------------------------------------

// As its thread sees it between two messages.
struct Doing {
  bool opensAnother;  // in the middle of something, it has opened another window
  bool awaitsRest;
};

static Doing whatIsItDoing() {
  Doing doing = {};
  doInUserThread([&] {
    const Window* window = topWindow();
    if (window == nullptr || window->ended) return;
    doing = {window->eventsInProgress > 0, window->awaitsRest};
  });
  return doing;
}

// Rest comes when there are no messages, so nobody may ask by one.
static void awaitRest() {
  for (DWORD waited = 0; waited < kPatience; ++waited) {
    const volatile Window* window = topWindow();
    if (window == nullptr || window->ended || !window->awaitsRest) return;
    Sleep(1);
  }
}

void settleAll() {
  doInUserThread([] {});  // what is posted meanwhile comes before the next
  for (;;) {
    const Doing doing = whatIsItDoing();
    if (!doing.opensAnother && !doing.awaitsRest) return;
    if (doing.opensAnother) {
      answerNextDialog();
    } else {
      awaitRest();
    }
  }
}

static const DialogPlay* currentPlay = nullptr;
static volatile bool runHasEnded = false;

// Null when there was none.
static HWND awaitPlayedWindow() {
  while (!runHasEnded) {
    const Window* window = topWindow();
    HWND handle = window != nullptr ? window->handle : nullptr;
    if (handle != nullptr && IsWindowVisible(handle) && IsWindowEnabled(handle)) return handle;
    if (isDialogToAnswer()) answerNextDialog();
    Sleep(1);
  }
  return nullptr;
}

static DWORD WINAPI playInWindow(void*) {
  watchUserThread();
  HWND handle = awaitPlayedWindow();
  if (handle != nullptr) {
    settleAll();
    DialogWindow shown = {handle};
    DialogUser user(&shown);
    (*currentPlay)(user);
    if (user.isOpen()) user.close();
  }
  leaveUserThread();
  return 0;
}

int16_t playDialog(const DialogPlay& play, const std::function<int16_t()>& run) {
  if (host().switches.display) host().switches.display = drawOnContext;
  prepareUserThread();
  currentPlay = &play;
  runHasEnded = false;
  HANDLE thread = CreateThread(nullptr, 0, playInWindow, nullptr, 0, nullptr);
  const int16_t result = run();
  runHasEnded = true;
  serveUntilEnd(thread);
  return result;
}

// --- Before ---------------------------------------------------------------------------------

void resetDialogUser() {
  forgetAnswers();
  passed = 1;
  forgetKeptValues();
  if (OpenClipboard(nullptr)) {
    EmptyClipboard();
    CloseClipboard();
  }
}
