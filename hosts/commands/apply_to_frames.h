// apply_to_frames: `morvalis apply` on a file of several pictures that the result's format holds,
// one in memory at a time.

#pragma once

#include <string>

#include "hosts/commands/apply_command.h"
#include "hosts/effect_runs/effect_run.h"

struct FramesFile {
  const FileBytes& contents;
  int32_t count;  // of pictures
  std::string image;
  std::string output;
};

// Every picture is rendered with the same settings, seed and mask. `quiet`: without progress.
void applyToFrames(const EffectPlan& plan, const ApplyOptions& options, const FramesFile& file,
                   bool quiet);
