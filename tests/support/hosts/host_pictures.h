// host_pictures: pictures, selections and settings that the tests of whole runs share.

#pragma once

#include "hosts/substitute_host/substitute_host.h"
#include "settings/effect_settings.h"

// Deterministic colourful picture; the last of 2 or 4 planes is unlike the others.
HostPicture testPicture(int32_t width, int32_t height, int32_t planes);

// Antialiased disc and bar.
HostMask testMask(int32_t width, int32_t height);

// The settings in the open host's parameter handle.
EffectSettings* hostSettings();

// Settings that let every effect show.
void showEverything(EffectSettings* settings);
