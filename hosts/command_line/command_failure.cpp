#include "hosts/command_line/command_failure.h"

#include <cstdio>
#include <exception>
#include <new>

#include "hosts/command_line/file_access.h"

void failOnFile(const std::string& file, const std::string& reason) {
  const std::string name = file == kStandardStream ? "standard input" : file;
  throw CommandFailure{kExitFailed, name + ": " + reason};
}

void failOnUsage(const std::string& text) {
  throw CommandFailure{kExitUsage, text};
}

// One line, whatever the names in it hold.
int reportFailure(const CommandFailure& failure) {
  if (failure.text.empty()) return failure.exitCode;
  std::string line = "morvalis: " + failure.text;
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' || c == 127) c = '?';
  }
  std::fprintf(stderr, "%s\n", line.c_str());
  return failure.exitCode;
}

// A closed pipe or a full disk under standard output is a failure too.
static int flushOutput(int exitCode) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
  return reportFailure({kExitFailed, "standard output: cannot be written"});
}

int runReporting(const std::function<int()>& command) {
  try {
    return flushOutput(command());
  } catch (const CommandFailure& failure) {
    return reportFailure(failure);
  } catch (const std::bad_alloc&) {
    return reportFailure({kExitFailed, "there is not enough memory"});
  } catch (const std::exception& error) {
    return reportFailure({kExitFailed, error.what()});
  }
}
