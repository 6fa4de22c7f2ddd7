// program_options: every command and option of the program, described once: what is parsed, the
// helps, the manual page and the completions all come from here.

#pragma once

#include <string>
#include <vector>

#include "hosts/commands/apply_command.h"
#include "hosts/commands/gallery_command.h"
#include "hosts/commands/preset_command.h"
#include "hosts/window_commands/edit_options.h"

namespace CLI {
class App;
}

struct ProgramOptions {
  ApplyOptions apply;
  EditOptions edit;
  PresetShowOptions presetShow;
  PresetSaveOptions presetSave;
  GalleryOptions gallery;
  bool settingsAsJson = false;
  std::string shell;                   // to complete for
  std::vector<std::string> helpWords;  // of the command to explain
};

void describeProgram(CLI::App* app, ProgramOptions* options);
