// program_session: how a program sets up its back end for a run.

#pragma once

#include <cstdint>

#include "platform/bitmap_decoder.h"

// Cuts the run off from the user: remembered values live in memory only, start empty, and end with
// the program.
void keepRememberedValuesInMemory();
bool runIsCutOff();

// From here on this is found remembered (null: nothing is), until the module remembers another
// value of the name. What the user has is not touched.
void stageRememberedValue(const char* name, const char* text);

// From here on this decodes the pictures that are no bitmaps, and choosers of pictures offer the
// patterns ("*.png *.jpg"), which must stay. It must not throw.
void decodeMorePictures(bool (*decode)(const char* path, DecodedBitmap* bitmap),
                        const char* patterns);
const char* morePicturePatterns();  // "": none

// This is told of every file that is written for the user. It must not throw.
void watchUserFiles(void (*written)(const char* path));

// The clock stands at this time from now on.
void fixClock(uint32_t seconds);

// The time between events no longer passes by itself, only by this.
void passMilliseconds(uint32_t milliseconds);

// How many alerts have been reported so far, so that a program does not report a failure twice.
int32_t reportedAlerts();
