#include "hosts/command_line/window_library.h"

#include <unistd.h>

#include <cstdio>

#include "hosts/process/command_failure.h"
#include "hosts/process/libraries/own_library.h"

static void* windowProcedure(const char* name) {
  std::string reason;
  void* procedure = ownProcedure("libmorvalis_window.so", name, &reason);
  if (procedure == nullptr) {
    throw CommandFailure{kExitFailed,
                         "no window can be opened: the part of the program that has windows, or "
                         "Qt 6 below it, is not installed (" +
                             reason + ")"};
  }
  return procedure;
}

int openAbout(char** argv) {
  return reinterpret_cast<int (*)(char**)>(windowProcedure("morvalisAbout"))(argv);
}

int openEdit(const EditOptions& options, char** argv) {
  return reinterpret_cast<int (*)(const EditOptions*, char**)>(windowProcedure("morvalisEdit"))(
      &options, argv);
}

// Of standard error, while it goes to this file; what it was is put back.
static std::string readErrors(std::FILE* file, int standardError) {
  std::fflush(stderr);
  dup2(standardError, STDERR_FILENO);
  close(standardError);
  std::string text;
  char part[4096];
  std::rewind(file);
  for (size_t count; (count = std::fread(part, 1, sizeof(part), file)) > 0;) {
    text.append(part, count);
  }
  std::fputs(text.c_str(), stderr);
  std::fflush(stderr);
  return text;
}

int runTellingInWindow(const std::function<int()>& command, char** argv) {
  std::FILE* file = std::tmpfile();
  const int standardError = file == nullptr ? -1 : dup(STDERR_FILENO);
  if (standardError < 0) return runReporting(command);
  std::fflush(stderr);
  dup2(fileno(file), STDERR_FILENO);
  const int exitCode = runReporting(command);
  const std::string text = readErrors(file, standardError);
  std::fclose(file);
  if (exitCode != kExitFailed && exitCode != kExitUsage) return exitCode;
  reinterpret_cast<void (*)(const char*, char**)>(windowProcedure("morvalisFailure"))(text.c_str(),
                                                                                      argv);
  return exitCode;
}
