#include "hosts/command_line/interrupt.h"

#include <csignal>

#include "hosts/command_line/command_failure.h"

static volatile std::sig_atomic_t flag = 0;

static void raiseFlag(int) {
  flag = 1;
}

void watchForInterrupts() {
  struct sigaction action = {};
  action.sa_handler = raiseFlag;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    // A run started in the background, or detached from its terminal, is told to ignore them.
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
}

bool interrupted() {
  return flag != 0;
}

void stopIfInterrupted() {
  if (interrupted()) throw CommandFailure{kExitInterrupted, "interrupted"};
}
