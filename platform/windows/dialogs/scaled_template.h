// scaled_template: a dialog of the module's resources in larger letters, by which the system
// measures everything in it.

#pragma once

#include <cstdint>

#include "platform/windows/windows_api.h"

// From the C library's malloc, whoever asks frees it; null when there is no such dialog.
DLGTEMPLATE* templateAtScale(const char* name, int32_t scale);
