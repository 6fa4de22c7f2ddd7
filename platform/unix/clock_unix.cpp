#include <chrono>
#include <ctime>
#include <optional>

#include "platform/clock.h"
#include "platform/unix/program_session.h"

static std::optional<uint32_t> fixedSeconds;

void fixClock(uint32_t seconds) {
  fixedSeconds = seconds;
}

static std::optional<uint32_t> stoppedMilliseconds;

void passMilliseconds(uint32_t milliseconds) {
  stoppedMilliseconds = stoppedMilliseconds.value_or(0) + milliseconds;
}

uint32_t millisecondsNow() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  const auto running = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  return stoppedMilliseconds.value_or(static_cast<uint32_t>(running));
}

uint32_t secondsNow() {
  return fixedSeconds.value_or(static_cast<uint32_t>(std::time(nullptr)));
}
