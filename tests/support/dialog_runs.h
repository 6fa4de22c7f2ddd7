// dialog_runs: the main dialog as a test plays its user, in the substitute host.

#pragma once

#include <functional>

#include "entry/session_record.h"
#include "platform/none/none_window.h"
#include "tests/support/host_runs.h"

using DialogPlay = std::function<void(NoneWindow& window)>;

// Opens a host on a picture, starts the filter with its dialog, plays, and ends the run. The result
// word. The host stays open, for a look at it; the next run closes it.
int16_t runDialog(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                  const DialogPlay& play, const std::function<void()>& prepare = nullptr);

// The same on a picture of 40 x 30 without a mask.
int16_t runDialog(const DialogPlay& play);

// The session of the open host.
SessionRecord* hostSession();

// Where a slider's value lies: a press there sets it.
Point sliderPoint(int32_t id, int32_t value);

// Middle of a control.
Point middleOf(int32_t id);
