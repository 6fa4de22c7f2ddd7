// window: what a back end supplies to run the main dialog.

#pragma once

#include <cstdint>

struct SessionRecord;

constexpr int32_t kDialogUnavailable = -1;

// Runs the main dialog modally, owned by the host's window (null: no owner); the number it ended
// with, or kDialogUnavailable.
int32_t runMainDialog(SessionRecord* session, void* ownerWindow);

// Shows the about box modally, owned by a window (null: no owner).
void runAboutBox(void* ownerWindow);
