// progress_window: how far a render is, or the reading or writing of a picture, in a window that
// appears once it takes noticeable time and lets the user stop it.

#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <cstdint>
#include <functional>
#include <memory>

struct ProgressWindow {
  std::unique_ptr<QProgressDialog> dialog;  // null until the first work begins
  QElapsedTimer sinceEvents;                // that the windows were last given time for
};

void showProgress(ProgressWindow* progress, int32_t done, int32_t total);

// Whether the user has stopped the render. To be asked often: the windows live on that.
bool renderStopped(ProgressWindow* progress);

// What a thread of its own does, with the window before it: `name` is the window's own, `label`
// what it says. Work that `isLong` shows at once, other work when the user begins to wonder. The
// window of work that came before goes on. What the work throws is thrown here. False when the
// user has stopped it.
struct SlowWork {
  const char* name;
  const char* label;
  bool isLong;
  std::function<void()> run;
};
bool runBehindWindow(ProgressWindow* progress, const SlowWork& work);

// Closes it as soon as the windows live again. The next work gets a window of its own.
void closeProgressLater(ProgressWindow* progress);
