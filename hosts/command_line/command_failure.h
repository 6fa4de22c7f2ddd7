// command_failure: how a command ends early. Thrown anywhere below a command; main prints the text
// as the run's one line on standard error and ends with the code.

#pragma once

#include <string>

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitInterrupted = 130;

struct CommandFailure {
  int exitCode;
  std::string text;
};

[[noreturn]] void failOnFile(const std::string& file, const std::string& reason);
[[noreturn]] void failOnUsage(const std::string& text);
