#include "hosts/window_commands/dialog_call.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include "hosts/window_commands/edit_run.h"
#include "platform/desktop/desktop_session.h"
#include "platform/unix/program_session.h"

constexpr int kEventPause = 30;  // milliseconds

// The dialog is gone from the screen only once its events have been seen to.
static RenderWatch watchOf(const TellProgress& progress) {
  QElapsedTimer sinceEvents;
  return {[] { return false; },
          [progress, sinceEvents](int32_t done, int32_t total) mutable {
            if (!sinceEvents.isValid() || sinceEvents.elapsed() > kEventPause) {
              QCoreApplication::processEvents();
              sinceEvents.restart();
            }
            progress(done, total);
          }};
}

void runDialogCall(DialogCall* call) {
  const auto run = [call] {
    belongToWindow(call->owner);
    const EditPlan plan = planEdit(call->options);
    fixClock(parseSeed(""));
    const RenderWatch watch = watchOf(call->progress);
    const EditOutcome outcome =
        editPicture(plan, call->picture, call->selection, call->name, watch);
    call->confirmed = outcome.confirmed;
    return kExitDone;
  };
  const auto report = [call](const CommandFailure& failure) {
    call->failure = failure;
    return failure.exitCode;
  };
  runReporting(run, report);
  belongToWindow(0);
}
