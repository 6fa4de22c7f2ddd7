// dialog_commands: what each button and each row of a picture menu does.

#pragma once

#include <cstdint>

struct DialogState;

void handleCommand(DialogState* dialog, int32_t id, int32_t notification);

// The end of a texture choice that opens a picture file: back to the previous one when no file was
// taken.
void settleTextureFile(DialogState* dialog, bool taken);
