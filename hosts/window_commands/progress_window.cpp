#include "hosts/window_commands/progress_window.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <thread>

#include "hosts/process/interrupt.h"
#include "hosts/process/progress_bar.h"

constexpr int kWondering = 200;  // milliseconds with nothing else on the screen
constexpr int kEventPause = 30;  // milliseconds

static void makeDialog(ProgressWindow* progress, const char* name, const char* label, int wait) {
  progress->dialog = std::make_unique<QProgressDialog>(label, "Cancel", 0, 100);
  QProgressDialog* dialog = progress->dialog.get();
  dialog->setObjectName(name);
  dialog->setWindowTitle("Morvalis");
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->setMinimumDuration(wait);
  dialog->setAutoClose(false);
  dialog->setAutoReset(false);
  dialog->setValue(0);
}

// Made with the first question of the render: its clock starts with it.
static void startProgress(ProgressWindow* progress) {
  makeDialog(progress, "progress", "Rendering the picture...", kWondering);
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

// --- Work on a thread of its own ------------------------------------------------------------

static void showWork(QProgressDialog* dialog) {
  const int32_t percent = notedProgress();
  // Moving to and fro until it is known how far the work is.
  dialog->setRange(0, percent < 0 ? 0 : 100);
  if (percent >= 0 && percent != dialog->value()) dialog->setValue(percent);
}

static void prepareDialog(ProgressWindow* progress, const SlowWork& work) {
  if (progress->dialog == nullptr) makeDialog(progress, work.name, work.label, kWondering);
  QProgressDialog* dialog = progress->dialog.get();
  dialog->setObjectName(work.name);
  dialog->setLabelText(work.label);
  QObject::connect(dialog, &QProgressDialog::canceled, dialog, askToStop);
  if (work.isLong) dialog->show();
}

bool runBehindWindow(ProgressWindow* progress, const SlowWork& work) {
  forgetProgress();
  prepareDialog(progress, work);
  QProgressDialog* dialog = progress->dialog.get();
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, dialog, [dialog] { showWork(dialog); });
  look.start(kEventPause);
  QEventLoop untilDone;
  std::exception_ptr failure;
  std::thread worker([&] {
    try {
      work.run();
    } catch (...) {
      failure = std::current_exception();
    }
    QMetaObject::invokeMethod(&untilDone, "quit", Qt::QueuedConnection);
  });
  untilDone.exec();
  worker.join();
  const bool stopped = dialog->wasCanceled();
  forgetStop();
  // Asked to stop when it had been done, it is done.
  if (stopped && failure != nullptr) return false;
  if (failure != nullptr) std::rethrow_exception(failure);
  return true;
}

void closeProgressLater(ProgressWindow* progress) {
  QProgressDialog* dialog = progress->dialog.get();
  if (dialog == nullptr) return;
  dialog->disconnect();  // there is nothing left to stop
  QTimer::singleShot(0, dialog, [progress] { progress->dialog.release()->deleteLater(); });
}
