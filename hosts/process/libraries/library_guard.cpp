#include "hosts/process/libraries/library_guard.h"

#include <csignal>
#include <iterator>

#include "hosts/process/command_failure.h"

// The sanitizers tell of such ends better.
#if defined(MORVALIS_SANITIZED)
LibraryGuard::LibraryGuard() = default;
LibraryGuard::~LibraryGuard() = default;
#else
static void end(int) {
  endAtOnce("there is not enough memory, or a library for picture files has broken down");
}

constexpr int kEnds[] = {SIGABRT, SIGTRAP, SIGSEGV, SIGBUS, SIGILL, SIGFPE};

LibraryGuard::LibraryGuard() {
  static_assert(std::size(kEnds) == kSignals);
  for (int i = 0; i < kSignals; ++i) before[i] = std::signal(kEnds[i], end);
}

LibraryGuard::~LibraryGuard() {
  for (int i = 0; i < kSignals; ++i) std::signal(kEnds[i], before[i]);
}
#endif
