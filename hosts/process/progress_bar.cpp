#include "hosts/process/progress_bar.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>

#include "hosts/process/libraries/quiet_errors.h"

constexpr int kUsualColumns = 80;
constexpr int kLeastCells = 10;
constexpr int kMostColumns = 1000;
constexpr std::chrono::milliseconds kShortestPause(50);
constexpr std::chrono::milliseconds kLongestPause(500);
constexpr std::chrono::milliseconds kShortStep(250);

using Clock = std::chrono::steady_clock;

ProgressBar makeProgressBar(bool quiet) {
  ProgressBar bar;
  bar.shown = !quiet && isatty(loudErrors()) == 1;
  return bar;
}

static int terminalColumns() {
  winsize size = {};
  const bool known = ioctl(loudErrors(), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? std::min<int>(size.ws_col, kMostColumns) : kUsualColumns;
}

// A terminal that the user holds (Ctrl-S) holds nothing up.
static bool takesText() {
  pollfd terminal = {loudErrors(), POLLOUT, 0};
  return poll(&terminal, 1, 0) == 1;
}

// The last column stays free: some terminals go to the next line there.
static void draw(ProgressBar* bar) {
  if (!takesText()) return;
  char end[64];
  const int taken = std::snprintf(end, sizeof(end), "] %3d %%%s%s", static_cast<int>(bar->percent),
                                  bar->step.empty() ? "" : "  ", bar->step.c_str());
  const int cells = std::max(kLeastCells, terminalColumns() - 2 - taken);
  const std::string full(static_cast<size_t>(bar->percent * cells / 100), '#');
  dprintf(loudErrors(), "\r[%-*s%s\x1b[K", cells, full.c_str(), end);
  bar->drawn = true;
  bar->drawnAt = Clock::now();
}

void drawProgress(ProgressBar* bar, int32_t done, int32_t total) {
  if (!bar->shown || total <= 0) return;
  const auto percent =
      static_cast<int32_t>(std::clamp<int64_t>(int64_t{done} * 100 / total, 0, 100));
  if (bar->drawn && (percent == bar->percent || Clock::now() - bar->drawnAt < kShortestPause)) {
    return;
  }
  bar->percent = percent;
  draw(bar);
}

void redrawProgress(ProgressBar* bar) {
  if (bar->drawn && Clock::now() - bar->drawnAt > kLongestPause) draw(bar);
}

void clearProgress(ProgressBar* bar) {
  if (!bar->drawn) return;
  dprintf(loudErrors(), "\r\x1b[K");
  bar->drawn = false;
}

// --- Of the step ----------------------------------------------------------------------------

static ProgressBar stepBar;
static Clock::time_point stepBegan;
static std::atomic<int32_t> noted = -1;

StepProgress::StepProgress(bool quiet, const char* step) {
  stepBar = makeProgressBar(quiet);
  stepBar.step = step;
  stepBegan = Clock::now();
}

StepProgress::~StepProgress() {
  clearProgress(&stepBar);
  stepBar.shown = false;
}

int32_t notedProgress() {
  return noted;
}

void forgetProgress() {
  noted = -1;
}

void noteProgress(int32_t done, int32_t total) {
  noted = total > 0 ? static_cast<int32_t>(int64_t{done} * 100 / total) : -1;
  if (stepBar.shown && Clock::now() - stepBegan > kShortStep) drawProgress(&stepBar, done, total);
}
