// dialog_controls: settings into controls and back, and the refresh after every change.

#pragma once

#include <cstdint>

#include "dialog/undo.h"
#include "settings/effect_settings.h"

struct DialogState;

void setControlRanges(DialogState* dialog);

// Settings to controls; everything they show is painted anew.
void loadControls(DialogState* dialog, bool redrawPictures);

// Controls to settings; and the settings as they would then be.
void readControls(DialogState* dialog);
EffectSettings shownSettings(const DialogState* dialog);

// After a completed change: notes it for undo, and renders when "Auto preview" is on.
void refreshPreview(DialogState* dialog, const Change& change = {});

// Sets a slider, limited to its range; nothing happens when it has the value already. One of
// several steps counts with the others.
constexpr int32_t kLargeStep = 10;
void setSlider(DialogState* dialog, int32_t id, int32_t value, const Change& change = {});
void stepSliderTo(DialogState* dialog, int32_t id, int32_t value);
