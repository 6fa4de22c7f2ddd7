#include "hosts/command_line/window_library.h"

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
