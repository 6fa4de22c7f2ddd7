#include "hosts/process/interrupt.h"

#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

#include "hosts/process/command_failure.h"
#include "hosts/process/leftovers.h"
#include "hosts/process/libraries/quiet_errors.h"

constexpr suseconds_t kPatience = 250000;  // microseconds from the signal to the end

static volatile std::sig_atomic_t raisedBy = 0;  // 0: nothing yet
static volatile std::sig_atomic_t quiet = 0;
static const char* volatile limitLine = "";
static std::atomic<bool> stopAsked = false;
static int errors = -1;

static void raiseFlag(int signal) {
  if (raisedBy == 0) {
    const itimerval once = {{0, 0}, {0, kPatience}};
    setitimer(ITIMER_REAL, &once, nullptr);
  }
  raisedBy = signal;
}

static void endAtOnce(int) {
  if (raisedBy == 0) endAtOnce(limitLine);
  removeLeftovers();
  constexpr char kText[] = "\r\x1b[Kmorvalis: interrupted\n";  // over a bar, on a terminal
  constexpr size_t kBarEnd = 4;
  const size_t start = isatty(errors) == 1 ? 0 : kBarEnd;
  if (quiet == 0 && write(errors, kText + start, sizeof(kText) - 1 - start) < 0) quiet = 1;
  _exit(interruptedExitCode());
}

static void handle(int signal, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  action.sa_flags = 0;  // what waits for a file or a pipe wakes up
  sigaction(signal, &action, nullptr);
}

void watchForInterrupts() {
  errors = loudErrors();
  handle(SIGALRM, endAtOnce);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    // A run started in the background, or detached from its terminal, is told to ignore them.
    if (before.sa_handler != SIG_IGN) handle(signal, raiseFlag);
  }
}

TimeLimit::TimeLimit(unsigned seconds, const char* line) {
  limitLine = line;
  if (raisedBy == 0) alarm(seconds);
}

TimeLimit::~TimeLimit() {
  if (raisedBy == 0) alarm(0);
}

void stayQuietAboutInterrupts() {
  quiet = 1;
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

void takeTimeToEnd() {
  const itimerval never = {};
  setitimer(ITIMER_REAL, &never, nullptr);
}

void stopIfInterrupted() {
  if (!interrupted()) return;
  if (raisedBy == 0) throw CommandFailure{kExitFailed, ""};
  takeTimeToEnd();
  throw CommandFailure{interruptedExitCode(), "interrupted"};
}
