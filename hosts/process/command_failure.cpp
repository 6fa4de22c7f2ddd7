#include "hosts/process/command_failure.h"

#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "hosts/process/file_access.h"
#include "hosts/process/leftovers.h"
#include "hosts/process/libraries/quiet_errors.h"

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

// The bytes of the letter in UTF-8 that begins here; 0 when it is none, or a control character.
static size_t letterBytes(const std::string& text, size_t at) {
  const auto first = static_cast<unsigned char>(text[at]);
  if (first < 0x80) return first < ' ' || first == 127 ? 0 : 1;
  const size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || at + bytes > text.size()) return 0;
  for (size_t i = 1; i < bytes; ++i) {
    if (!isInsideLetter(text[at + i])) return 0;
  }
  const bool control = first == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
  return control ? 0 : bytes;
}

static std::string escaped(const std::string& text) {
  std::string line;
  for (size_t at = 0; at < text.size();) {
    const size_t bytes = letterBytes(text, at);
    if (bytes > 0) {
      line.append(text, at, bytes);
      at += bytes;
    } else {
      char code[5];
      std::snprintf(code, sizeof(code), "\\x%02x", static_cast<unsigned char>(text[at++]));
      line += code;
    }
  }
  return line;
}

std::string printableLine(const std::string& text) {
  const std::string line = escaped(text);
  if (line.size() <= kLongestLine) return line;
  size_t start = kKeptStart;
  size_t end = line.size() - kKeptEnd;
  while (start > 0 && isInsideLetter(line[start])) --start;
  while (end < line.size() && isInsideLetter(line[end])) ++end;
  return line.substr(0, start) + " ... " + line.substr(end);
}

// In one piece, since several processes may speak at once, and in the place of a progress bar.
static void printLine(const std::string& text) {
  const char* start = isatty(STDERR_FILENO) == 1 ? "\r\x1b[K" : "";
  std::fprintf(stderr, "%smorvalis: %s\n", start, printableLine(text).c_str());
}

int reportFailure(const CommandFailure& failure) {
  if (!failure.text.empty()) printLine(failure.text);
  return failure.exitCode;
}

void reportNote(const std::string& text) {
  printLine(text);
}

void reportWarning(const std::string& text) {
  printLine("warning: " + text);
}

// A closed pipe or a full disk under standard output is a failure too.
static int flushOutput(int exitCode) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
  return reportFailure({kExitFailed, "standard output: cannot be written"});
}

void endAtOnce(const char* text) {
  removeLeftovers();
  const int loud = loudErrors();
  for (const char* part : {"morvalis: ", text, "\n"}) {
    static_cast<void>(!write(loud < 0 ? STDERR_FILENO : loud, part, std::strlen(part)));
  }
  _exit(kExitFailed);
}

void endOrderlyWithoutMemory() {
  loudErrors();
  std::set_terminate([] {
    try {
      std::rethrow_exception(std::current_exception());
    } catch (const std::bad_alloc&) {
      endAtOnce("there is not enough memory");
    } catch (...) {
    }
    std::abort();
  });
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
