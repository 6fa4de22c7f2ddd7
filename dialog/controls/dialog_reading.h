// dialog_reading: what each control is and holds, in words.

#pragma once

#include <cstdint>

#include "platform/control_reading.h"

struct DialogState;

// The reader of the dialog's window; its context is the DialogState.
bool readControl(void* context, int32_t id, ControlReading* reading);

// Somebody who cannot see it sets a slider or a picker, in the units of its reading.
void setFromOutside(DialogState* dialog, int32_t id, int32_t amount);

// Tells the back end that a control's reading has changed, unless this is the value told last.
void tellIfNews(DialogState* dialog, int32_t id, int32_t value);
