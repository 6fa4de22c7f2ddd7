// work_progress: how far the reading or writing of a picture is, told by the thread that does it
// and read by another one.

#pragma once

#include <cstdint>

// Told how far the work is, in percent; answers whether it is to stop.
using WorkWatch = bool (*)(int32_t percent);

// The one that remembers, and stops when the run is interrupted.
bool watchWork(int32_t percent);

// -1: not known.
void forgetWork();
int32_t workDone();
