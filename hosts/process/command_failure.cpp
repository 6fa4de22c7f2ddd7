#include "hosts/process/command_failure.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <new>

#include "hosts/process/file_access.h"

// In bytes; room for two long paths and what is to be said about them.
constexpr size_t kLongestLine = 1000;
constexpr size_t kKeptStart = 200;
constexpr size_t kKeptEnd = 300;  // the reason stands behind the name

void failOnFile(const std::string& file, const std::string& reason) {
  std::string name = file == kStandardStream ? "standard input" : file;
  if (name.empty()) name = "\"\"";
  throw CommandFailure{kExitFailed, name + ": " + reason};
}

void failOnUsage(const std::string& text) {
  throw CommandFailure{kExitUsage, text};
}

int wholeNumberOf(const std::string& option, const std::string& text, int least, int most) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (stop != end || error != std::errc() || number < least || number > most) {
    failOnUsage(option + " " + text + ": takes a whole number, " + std::to_string(least) + " to " +
                std::to_string(most));
  }
  return number;
}

// Whether a letter of several bytes goes on here.
static bool isInsideLetter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::string printableLine(const std::string& text) {
  std::string line = text;
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' || c == 127) c = '?';
  }
  if (line.size() <= kLongestLine) return line;
  size_t start = kKeptStart;
  size_t end = line.size() - kKeptEnd;
  while (start > 0 && isInsideLetter(line[start])) --start;
  while (end < line.size() && isInsideLetter(line[end])) ++end;
  return line.substr(0, start) + " ... " + line.substr(end);
}

static void printLine(const std::string& text) {
  std::fprintf(stderr, "morvalis: %s\n", printableLine(text).c_str());
}

int reportFailure(const CommandFailure& failure) {
  if (!failure.text.empty()) printLine(failure.text);
  return failure.exitCode;
}

void reportWarning(const std::string& text) {
  printLine("warning: " + text);
}

// A closed pipe or a full disk under standard output is a failure too.
static int flushOutput(int exitCode) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
  return reportFailure({kExitFailed, "standard output: cannot be written"});
}

int runReporting(const std::function<int()>& command, const Report& report) {
  try {
    return flushOutput(command());
  } catch (const CommandFailure& failure) {
    return report(failure);
  } catch (const std::bad_alloc&) {
    return report({kExitFailed, "there is not enough memory"});
  } catch (const std::exception& error) {
    return report({kExitFailed, error.what()});
  }
}
