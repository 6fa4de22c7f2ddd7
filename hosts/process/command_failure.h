// command_failure: how a command ends early. Thrown anywhere below a command; whoever runs the
// command prints the text as one line on standard error and ends with the code.

#pragma once

#include <functional>
#include <string>

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

struct CommandFailure {
  int exitCode;
  std::string text;
};

// The file "-" is told as standard input, and an empty name in quotes.
[[noreturn]] void failOnFile(const std::string& file, const std::string& reason);
[[noreturn]] void failOnUsage(const std::string& text);

// What an option of this name takes; ends the command when the text is none of these numbers.
int wholeNumberOf(const std::string& option, const std::string& text, int least, int most);

// Prints the text, if there is one; the exit code.
int reportFailure(const CommandFailure& failure);

// Prints something to be known about a run that goes on.
void reportWarning(const std::string& text);

// Tells what has been done; for those who ask.
void reportNote(const std::string& text);

// A text as one line of a length that can be read, whatever the names in it hold: what is no letter
// stands there as \\x and two digits.
std::string printableLine(const std::string& text);

// Where memory ends within a procedure that may not throw (a library's, a destructor), the program
// ends all the same with a line and the code of a failure.
void endOrderlyWithoutMemory();

// Ends the program at once with this line. Async-signal-safe.
[[noreturn]] void endAtOnce(const char* text);

// The command's exit code, or that of its failure, which is reported.
using Report = std::function<int(const CommandFailure&)>;
int runReporting(const std::function<int()>& command, const Report& report = reportFailure);
