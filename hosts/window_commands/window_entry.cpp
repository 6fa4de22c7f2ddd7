// The doors of the library that has windows. It carries the module and a back end of its own, so
// that the program without windows needs neither Qt nor this.

#include "hosts/process/command_failure.h"
#include "hosts/substitute_host/substitute_host.h"
#include "hosts/window_commands/dialog_call.h"
#include "hosts/window_commands/edit_command.h"
#include "hosts/window_commands/window_program.h"

#define MORVALIS_DOOR extern "C" __attribute__((visibility("default")))

MORVALIS_DOOR int morvalisAbout(char** argv) {
  int oneArgument = 1;
  const auto application = startWindows(&oneArgument, argv);
  callAbout();
  return kExitDone;
}

MORVALIS_DOOR int morvalisEdit(const EditOptions* options, char** argv) {
  int oneArgument = 1;
  const auto application = startWindows(&oneArgument, argv);
  return runEditCommand(*options);
}

MORVALIS_DOOR void morvalisFailure(const char* text, char** argv) {
  int oneArgument = 1;
  const auto application = startWindows(&oneArgument, argv);
  showFailure(text);
}

MORVALIS_DOOR void morvalisDialog(DialogCall* call) {
  char name[] = "morvalis";
  char* oneName[] = {name, nullptr};
  int oneArgument = 1;
  const auto application = startWindows(&oneArgument, oneName);
  runDialogCall(call);
}
