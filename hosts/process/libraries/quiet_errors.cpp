#include "hosts/process/libraries/quiet_errors.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

// Where the descriptor cannot be exchanged, the complaints are heard after all.
QuietErrors::QuietErrors() : kept(dup(STDERR_FILENO)) {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (kept >= 0 && nowhere >= 0) dup2(nowhere, STDERR_FILENO);
  if (nowhere >= 0) close(nowhere);
}

QuietErrors::~QuietErrors() {
  if (kept < 0) return;
  std::fflush(stderr);
  dup2(kept, STDERR_FILENO);
  close(kept);
}

int loudErrors() {
  constexpr int kBeyondTheUsual = 10;
  static const int descriptor = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, kBeyondTheUsual);
  return descriptor;
}
