// progress_bar: one line on standard error, redrawn in place, that is gone when the work is done.

#pragma once

#include <chrono>
#include <cstdint>

struct ProgressBar {
  bool shown = false;  // false: everything below does nothing
  bool drawn = false;
  int32_t percent = -1;
  std::chrono::steady_clock::time_point drawnAt = {};
};

// A bar when standard error is a terminal and the user has not asked for silence.
ProgressBar makeProgressBar(bool quiet);
void drawProgress(ProgressBar* bar, int32_t done, int32_t total);
void clearProgress(ProgressBar* bar);
