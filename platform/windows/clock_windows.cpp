#include "platform/clock.h"

#include <ctime>

#include "platform/windows/windows_api.h"

uint32_t secondsNow() {
  return static_cast<uint32_t>(std::time(nullptr));
}

uint32_t millisecondsNow() {
  return GetTickCount();
}
