// dialog_controls: settings into controls and back, and the refresh after every change.

#pragma once

#include <cstdint>

#include "settings/effect_settings.h"

struct DialogState;

void setControlRanges(DialogState* dialog);

// Settings to controls; everything they show is painted anew.
void loadControls(DialogState* dialog, bool redrawPictures);

// Controls to settings; and the settings as they would then be.
void readControls(DialogState* dialog);
EffectSettings shownSettings(const DialogState* dialog);

// After a completed change: notes it for undo, and renders when "Auto preview" is on.
void refreshPreview(DialogState* dialog);
