#include "hosts/process/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

constexpr int32_t kBarCells = 40;
constexpr std::chrono::milliseconds kShortestPause(50);

ProgressBar makeProgressBar(bool quiet) {
  ProgressBar bar;
  bar.shown = !quiet && isatty(STDERR_FILENO) == 1;
  return bar;
}

void drawProgress(ProgressBar* bar, int32_t done, int32_t total) {
  if (!bar->shown || total <= 0) return;
  const auto now = std::chrono::steady_clock::now();
  const int32_t percent =
      static_cast<int32_t>(std::clamp<int64_t>(int64_t{done} * 100 / total, 0, 100));
  if (bar->drawn && (percent == bar->percent || now - bar->drawnAt < kShortestPause)) return;
  const int32_t cells = percent * kBarCells / 100;
  const std::string full(static_cast<size_t>(cells), '#');
  std::fprintf(stderr, "\r[%-*s] %3d %%", kBarCells, full.c_str(), percent);
  std::fflush(stderr);
  bar->drawn = true;
  bar->percent = percent;
  bar->drawnAt = now;
}

void clearProgress(ProgressBar* bar) {
  if (!bar->drawn) return;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
  bar->drawn = false;
}
