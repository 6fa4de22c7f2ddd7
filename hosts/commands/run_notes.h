// run_notes: what --verbose tells on standard error of one picture's way through the program, and
// how long each part of it took.

#pragma once

#include <chrono>
#include <string>

#include "hosts/effect_runs/effect_run.h"
#include "hosts/picture_files/picture_format.h"

struct RunNotes {
  bool wanted = false;
  std::string picture;  // which of several; empty: there is one
  std::chrono::steady_clock::time_point since = std::chrono::steady_clock::now();
};

// Each tells the time since the one before it.
void noteLoaded(const Picture& picture, const std::string& file, RunNotes* notes);
void noteSelection(const HostMask& mask, const std::string& source, RunNotes* notes);
void noteRendered(const EffectPlan& plan, const std::string& preset, RunNotes* notes);

// `kept` and `dropped` are lists, or "".
void noteSaved(const std::string& file, const std::string& kept, const std::string& dropped,
               RunNotes* notes);
