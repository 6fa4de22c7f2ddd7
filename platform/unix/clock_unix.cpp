#include <ctime>
#include <optional>

#include "platform/clock.h"
#include "platform/unix/program_session.h"

static std::optional<uint32_t> fixedSeconds;

void fixClock(uint32_t seconds) {
  fixedSeconds = seconds;
}

uint32_t secondsNow() {
  return fixedSeconds.value_or(static_cast<uint32_t>(std::time(nullptr)));
}
