#include "hosts/process/child_processes.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <map>

#include "hosts/process/command_failure.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/leftovers.h"
#include "hosts/process/progress_bar.h"

constexpr int kMostJobs = 256;
constexpr useconds_t kPollMicroseconds = 5000;

int parseJobs(const std::string& text) {
  int jobs = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, jobs);
  if (stop != end || error != std::errc() || jobs < 1 || jobs > kMostJobs) {
    failOnUsage("--jobs " + text + ": takes a whole number, 1 to " + std::to_string(kMostJobs));
  }
  return jobs;
}

// The parent says once for all that the run was interrupted.
[[noreturn]] static void runChild(const ChildWork& work, size_t index, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(kExitFailed);
  forgetLeftovers();
  stayQuietAboutInterrupts();
  const int code = runReporting([&work, index] {
    try {
      return work.command(index);
    } catch (const CommandFailure& failure) {
      if (!interrupted()) throw;
      return failure.exitCode;
    }
  });
  // Nothing of the parent's is to be ended or written here.
  _exit(code);
}

static pid_t startProcess(const ChildWork& work, size_t index) {
  std::fflush(stdout);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) throw CommandFailure{kExitFailed, "no further process can be started"};
  if (child == 0) runChild(work, index, parent);
  return child;
}

using Children = std::map<pid_t, size_t>;

static void signalAll(const Children& children, int signal) {
  for (const auto& [child, index] : children) kill(child, signal);
}

// Each ends soon, with nothing of its own left behind.
static void endChildren(Children* children) {
  constexpr int kTurns = 80;
  takeTimeToEnd();
  signalAll(*children, SIGTERM);
  for (int turn = 0; turn < kTurns && !children->empty(); ++turn) {
    const pid_t ended = waitpid(-1, nullptr, WNOHANG);
    if (ended > 0) {
      children->erase(ended);
    } else {
      usleep(kPollMicroseconds);
    }
  }
  signalAll(*children, SIGKILL);
  for (const auto& [child, index] : *children) waitpid(child, nullptr, 0);
  children->clear();
}

constexpr int kUnknownEnd = -1;  // of a child that somebody else has waited for

static int reportEnd(const std::string& name, int status) {
  if (status == kUnknownEnd) {
    reportFailure({kExitFailed, name + ": nothing is known of how its process ended"});
    return kExitFailed;
  }
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  reportFailure({kExitFailed,
                 name + ": its process was ended by signal " + std::to_string(WTERMSIG(status))});
  return kExitFailed;
}

// Waits in short naps: an interruption must be noticed also when no child ends.
static bool takeOneEnded(ProgressBar* bar, Children* children, size_t* index, int* status) {
  for (;;) {
    const pid_t ended = waitpid(-1, status, WNOHANG);
    const bool noneLeft = ended < 0 && errno == ECHILD;
    if (noneLeft) *status = kUnknownEnd;
    const auto found = noneLeft ? children->begin() : children->find(ended);
    if (found != children->end()) {
      *index = found->second;
      children->erase(found);
      return true;
    }
    if (interrupted()) return false;
    redrawProgress(bar);
    usleep(kPollMicroseconds);
  }
}

// Calls `ended` with the index and exit code of each child.
static void runAll(const ChildWork& work, const std::function<void(size_t, int)>& ended) {
  const size_t count = work.names.size();
  ProgressBar bar = makeProgressBar(work.quiet);
  Children children;
  size_t started = 0;
  size_t endedCount = 0;
  while (endedCount < count) {
    while (started < count && children.size() < static_cast<size_t>(work.jobs)) {
      const pid_t child = startProcess(work, started);
      children.emplace(child, started++);
    }
    drawProgress(&bar, static_cast<int32_t>(endedCount), static_cast<int32_t>(count));
    size_t index = 0;
    int status = 0;
    if (!takeOneEnded(&bar, &children, &index, &status)) {
      endChildren(&children);
      clearProgress(&bar);
      stopIfInterrupted();
    }
    clearProgress(&bar);
    ended(index, reportEnd(work.names[index], status));
    ++endedCount;
  }
  stopIfInterrupted();
}

std::vector<bool> runInChildren(const ChildWork& work) {
  std::vector<bool> done(work.names.size(), false);
  runAll(work, [&done](size_t index, int code) { done[index] = code == kExitDone; });
  return done;
}

void runInChild(const std::function<int()>& command) {
  int exitCode = kExitDone;
  const ChildWork work = {{"the first step"}, [&command](size_t) { return command(); }, 1, true};
  runAll(work, [&exitCode](size_t, int code) { exitCode = code; });
  if (exitCode != kExitDone) throw CommandFailure{exitCode, ""};
}
