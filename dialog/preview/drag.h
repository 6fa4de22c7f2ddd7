// drag: what a drag with the pointer has begun with, and the preview that follows it.

#pragma once

#include <cstdint>

#include "settings/effect_settings.h"

struct DialogState;

struct DragStart {
  EffectSettings settings;
  int32_t value;  // of the control that is dragged
};

// Before the control that is about to be dragged changes anything.
void beginDrag(DialogState* dialog, int32_t id);

// Everything as it was before the drag; the button is still down.
void undoDrag(DialogState* dialog);

// The preview is to follow a drag, or the steps of a wheel or a key held down, once nothing else is
// waiting, so that a slow one never falls behind the hand.
void followControl(DialogState* dialog);

// Nothing else is waiting, or may wait any longer.
void renderAtRest(DialogState* dialog);
