// progress_bar: one line on standard error as wide as the terminal, redrawn in place, that is gone
// when the work is done.

#pragma once

#include <chrono>
#include <cstdint>
#include <string>

struct ProgressBar {
  bool shown = false;  // false: everything below does nothing
  bool drawn = false;
  std::string step;  // what is being done; empty: not said
  int32_t percent = -1;
  std::chrono::steady_clock::time_point drawnAt = {};
};

// A bar when standard error is a terminal and the user has not asked for silence.
ProgressBar makeProgressBar(bool quiet);
void drawProgress(ProgressBar* bar, int32_t done, int32_t total);
void clearProgress(ProgressBar* bar);

// Again, now and then: a message may have taken its place.
void redrawProgress(ProgressBar* bar);

// The bar of the step that this process is at, for whoever does the work: one at a time, gone with
// its scope. The first moments of a step show none.
class StepProgress {
 public:
  StepProgress(bool quiet, const char* step);
  ~StepProgress();
  StepProgress(const StepProgress&) = delete;
  StepProgress& operator=(const StepProgress&) = delete;
};
void noteProgress(int32_t done, int32_t total);

// What was noted last, in percent, for another thread; -1 when nothing has been.
int32_t notedProgress();
void forgetProgress();
