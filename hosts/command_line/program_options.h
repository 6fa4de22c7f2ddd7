// program_options: every command and option of the program, described once: what is parsed, the
// helps, the manual page and the completions all come from here.

#pragma once

#include <string>
#include <vector>

#include "hosts/command_line/apply_command.h"
#include "hosts/command_line/edit_command.h"
#include "hosts/command_line/gallery_command.h"
#include "hosts/command_line/preset_command.h"

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
