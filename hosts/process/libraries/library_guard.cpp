#include "hosts/process/libraries/library_guard.h"

#include <csignal>
#include <cstdlib>
#include <iterator>

#include "hosts/process/command_failure.h"
#include "hosts/process/interrupt.h"

// The sanitizers tell of such ends better.
#if defined(MORVALIS_SANITIZED)
LibraryGuard::LibraryGuard() = default;
LibraryGuard::~LibraryGuard() = default;
#else
static void end(int) {
  endAtOnce("there is not enough memory, or a library for picture files has broken down");
}

constexpr int kEnds[] = {SIGABRT, SIGTRAP, SIGSEGV, SIGBUS, SIGILL, SIGFPE};

static int standing = 0;

// Some libraries leave the program by exit, without a word that anybody hears.
static void endAtExit() {
  if (standing > 0) end(0);
}

LibraryGuard::LibraryGuard() {
  static_assert(std::size(kEnds) == kSignals);
  [[maybe_unused]] static const bool watches = std::atexit(endAtExit) == 0;
  if (standing++ == 0) watchForStandstill(true);
  for (int i = 0; i < kSignals; ++i) before[i] = std::signal(kEnds[i], end);
}

LibraryGuard::~LibraryGuard() {
  if (--standing == 0) watchForStandstill(false);
  for (int i = 0; i < kSignals; ++i) std::signal(kEnds[i], before[i]);
}
#endif
