// child_processes: the same work on several things, each in a process of its own: the module keeps
// one session per process, and one that fails does not stop the others.
//
// Before its last child has started a process may not work on pictures: the picture library then
// keeps threads, which its children would wait for and not have.

#pragma once

#include <functional>
#include <string>
#include <vector>

// How many at a time --jobs asks for; ends the command when it is not a number.
int parseJobs(const std::string& text);

struct ChildWork {
  std::vector<std::string> names;      // of the things, for messages
  std::function<int(size_t)> command;  // on one of them; in the child
  int jobs;                            // at most so many at a time
  bool quiet;                          // no progress bar
};

// For each thing whether the work on it succeeded. The children report their failures; an
// interruption ends them all, and the command.
std::vector<bool> runInChildren(const ChildWork& work);

// One piece of work; when it fails the command ends as it did.
void runInChild(const std::function<int()>& command);
