#include "hosts/process/interrupt.h"

#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>

#include "hosts/process/command_failure.h"
#include "hosts/process/leftovers.h"
#include "hosts/process/libraries/quiet_errors.h"

constexpr suseconds_t kPatience = 250000;  // microseconds from the signal to the end

// Of a standstill.
constexpr time_t kTurnSeconds = 5;
constexpr int kIdleTurns = 5;
constexpr int64_t kLeastWork = 500;  // microseconds of the processor in a turn

static volatile std::sig_atomic_t raisedBy = 0;  // 0: nothing yet
static volatile std::sig_atomic_t quiet = 0;
static std::atomic<bool> stopAsked = false;
static int errors = -1;
static std::atomic<int64_t> workBefore = 0;
static std::atomic<int> idleTurns = 0;

static void startPatience() {
  const itimerval once = {{0, 0}, {0, kPatience}};
  setitimer(ITIMER_REAL, &once, nullptr);
}

static void raiseFlag(int signal) {
  if (raisedBy == 0) startPatience();
  raisedBy = signal;
}

static int64_t workSoFar() {
  rusage used = {};
  getrusage(RUSAGE_SELF, &used);
  const auto microseconds = [](const timeval& time) {
    return int64_t{time.tv_sec} * 1000000 + time.tv_usec;
  };
  return microseconds(used.ru_utime) + microseconds(used.ru_stime);
}

static void lookForStandstill() {
  const int64_t work = workSoFar();
  idleTurns = work - workBefore < kLeastWork ? idleTurns + 1 : 0;
  workBefore = work;
  if (idleTurns < kIdleTurns) return;
  endAtOnce("a library for picture files has come to a standstill; memory or threads may be short");
}

[[noreturn]] static void endInterrupted() {
  removeLeftovers();
  constexpr char kText[] = "\r\x1b[Kmorvalis: interrupted\n";  // over a bar, on a terminal
  constexpr size_t kBarEnd = 4;
  const size_t start = isatty(errors) == 1 ? 0 : kBarEnd;
  if (quiet == 0 && write(errors, kText + start, sizeof(kText) - 1 - start) < 0) quiet = 1;
  _exit(interruptedExitCode());
}

static void takeAlarm(int) {
  if (raisedBy == 0) return lookForStandstill();
  endInterrupted();
}

static void handle(int signal, void (*handler)(int), int flags) {
  struct sigaction action = {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  action.sa_flags = flags;
  sigaction(signal, &action, nullptr);
}

void watchForInterrupts() {
  errors = loudErrors();
  handle(SIGALRM, takeAlarm, SA_RESTART);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    // A run started in the background, or detached from its terminal, is told to ignore them.
    // What waits for a file or a pipe wakes up.
    if (before.sa_handler != SIG_IGN) handle(signal, raiseFlag, 0);
  }
}

static bool watching = false;

void watchForStandstill(bool watched) {
  watching = watched;
  if (raisedBy != 0) return;
  handle(SIGALRM, takeAlarm, SA_RESTART);
  workBefore = workSoFar();
  idleTurns = 0;
  const time_t seconds = watched ? kTurnSeconds : 0;
  const itimerval turns = {{seconds, 0}, {seconds, 0}};
  setitimer(ITIMER_REAL, &turns, nullptr);
  if (raisedBy != 0) startPatience();  // raised meanwhile, its own has been overwritten
}

UnwatchedWait::UnwatchedWait() : before(watching) {
  if (before) watchForStandstill(false);
}

UnwatchedWait::~UnwatchedWait() {
  if (before) watchForStandstill(true);
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
