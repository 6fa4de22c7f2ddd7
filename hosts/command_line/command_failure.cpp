#include "hosts/command_line/command_failure.h"

void failOnFile(const std::string& file, const std::string& reason) {
  throw CommandFailure{kExitFailed, file + ": " + reason};
}

void failOnUsage(const std::string& text) {
  throw CommandFailure{kExitUsage, text};
}
