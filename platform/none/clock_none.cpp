#include "platform/clock.h"

#include "platform/none/none_state.h"

uint32_t secondsNow() {
  return noneState().script.seconds;
}

uint32_t millisecondsNow() {
  return noneState().script.milliseconds;
}
