// script_window: a window that a script plays in.

#pragma once

#include "hosts/windows_host/user_thread.h"

struct DialogWindow {
  HWND handle;
};

// Until everything that was posted has been done and what it has opened is answered.
void settleAll();

// What the clock of the scripts shows goes on.
void passMilliseconds(unsigned time);
