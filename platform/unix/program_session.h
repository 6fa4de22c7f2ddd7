// program_session: how a program sets up its back end for a run.

#pragma once

#include <cstdint>

// Cuts the run off from the user: remembered values live in memory only, start empty, and end with
// the program.
void keepRememberedValuesInMemory();
bool runIsCutOff();

// From here on this is found remembered (null: nothing is), until the module remembers another
// value of the name. What the user has is not touched.
void stageRememberedValue(const char* name, const char* text);

// The clock stands at this time from now on.
void fixClock(uint32_t seconds);

// The time between events no longer passes by itself, only by this.
void passMilliseconds(uint32_t milliseconds);

// How many alerts have been reported so far, so that a program does not report a failure twice.
int32_t reportedAlerts();
