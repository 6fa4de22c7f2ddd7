// colour_choice: the user chooses a light's or the tarnish's colour, through the host where it
// offers that.

#pragma once

#include "settings/effect_settings.h"

struct DialogState;

void chooseColor(DialogState* dialog, const char* prompt, Color16* colour);
