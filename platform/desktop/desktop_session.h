// desktop_session: how a program on the desktop sets up the back end for a run.

#pragma once

#include <cstdint>

// Cuts the run off from the user: remembered values live in memory only, start empty, and end with
// the program.
void keepRememberedValuesInMemory();

// The clock stands at this time from now on.
void fixClock(uint32_t seconds);

// How many alerts have been reported so far, so that a program does not report a failure twice.
int32_t reportedAlerts();
