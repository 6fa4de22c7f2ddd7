#include "hosts/window_commands/progress_window.h"

#include <QApplication>
#include <algorithm>

constexpr int kNoticeable = 500;  // milliseconds
constexpr int kEventPause = 30;   // milliseconds

// Made with the first question of the render: its clock starts with it.
static void startProgress(ProgressWindow* progress) {
  progress->dialog =
      std::make_unique<QProgressDialog>("Rendering the picture...", "Cancel", 0, 100);
  QProgressDialog* dialog = progress->dialog.get();
  dialog->setObjectName("progress");
  dialog->setWindowTitle("Morvalis");
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->setMinimumDuration(kNoticeable);
  dialog->setAutoClose(false);
  dialog->setAutoReset(false);
  dialog->setValue(0);
  progress->sinceEvents.start();
}

void showProgress(ProgressWindow* progress, int32_t done, int32_t total) {
  if (total <= 0) return;
  if (progress->dialog == nullptr) startProgress(progress);
  const int64_t percent = std::clamp<int64_t>(int64_t{done} * 100 / total, 0, 100);
  if (percent != progress->dialog->value()) progress->dialog->setValue(static_cast<int>(percent));
}

bool renderStopped(ProgressWindow* progress) {
  if (progress->dialog == nullptr) startProgress(progress);
  if (progress->sinceEvents.elapsed() >= kEventPause) {
    QCoreApplication::processEvents();
    progress->sinceEvents.restart();
  }
  return progress->dialog->wasCanceled();
}
