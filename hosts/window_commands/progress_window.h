// progress_window: how far a render is, in a window that appears once it takes noticeable time and
// lets the user stop it.

#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <cstdint>
#include <memory>

struct ProgressWindow {
  std::unique_ptr<QProgressDialog> dialog;  // null until the render begins
  QElapsedTimer sinceEvents;                // that the windows were last given time for
};

void showProgress(ProgressWindow* progress, int32_t done, int32_t total);

// Whether the user has stopped the render. To be asked often: the windows live on that.
bool renderStopped(ProgressWindow* progress);
