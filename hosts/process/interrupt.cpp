#include "hosts/process/interrupt.h"

#include <atomic>
#include <csignal>

#include "hosts/process/command_failure.h"

static volatile std::sig_atomic_t raisedBy = 0;  // 0: nothing yet
static std::atomic<bool> stopAsked = false;

static void raiseFlag(int signal) {
  raisedBy = signal;
}

void watchForInterrupts() {
  struct sigaction action = {};
  action.sa_handler = raiseFlag;
  sigemptyset(&action.sa_mask);
  action.sa_flags = 0;  // what waits for a file or a pipe wakes up
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    // A run started in the background, or detached from its terminal, is told to ignore them.
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
}

bool interrupted() {
  return raisedBy != 0 || stopAsked;
}

void askToStop() {
  stopAsked = true;
}

void forgetStop() {
  stopAsked = false;
}

int interruptedExitCode() {
  return 128 + (raisedBy == 0 ? SIGINT : raisedBy);
}

void stopIfInterrupted() {
  if (raisedBy == 0 && stopAsked) throw CommandFailure{kExitFailed, ""};
  if (interrupted()) throw CommandFailure{interruptedExitCode(), "interrupted"};
}
