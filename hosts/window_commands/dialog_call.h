// dialog_call: the dialog on a picture of another program, which has windows of its own.

#pragma once

#include <cstdint>
#include <string>

#include "hosts/effect_choices/effect_choices.h"
#include "hosts/effect_runs/effect_run.h"
#include "hosts/effect_runs/selection.h"
#include "hosts/process/command_failure.h"

struct DialogCall {
  EffectOptions options;       // where the dialog starts; empty: at what was confirmed last
  Picture* picture = nullptr;  // becomes the result
  Selection selection;
  std::string name;       // of the picture, for messages
  uint64_t owner = 0;     // the window that the dialog belongs to, by its system's number; 0: none
  TellProgress progress;  // of the render, once the dialog has been confirmed

  bool confirmed = false;
  CommandFailure failure = {kExitDone, ""};  // anything else than kExitDone: why there is no result
};

// Needs a program with windows.
void runDialogCall(DialogCall* call);
