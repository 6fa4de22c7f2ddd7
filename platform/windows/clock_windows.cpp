#include "platform/clock.h"

#include <ctime>

uint32_t secondsNow() {
  return static_cast<uint32_t>(std::time(nullptr));
}
