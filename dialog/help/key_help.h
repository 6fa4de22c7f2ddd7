// key_help: what the dialog's keys and the mouse do, for the sheet in the dialog and the manual
// page.

#pragma once

#include <cstdint>

#include "platform/alerts.h"

extern const SheetRow kKeyHelp[];
extern const int32_t kKeyHelpCount;

// The sheet, until the user closes it.
void showKeyHelp();
