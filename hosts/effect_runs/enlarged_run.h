// enlarged_run: the effect rendered larger than the picture and reduced to it, for a selection that
// was drawn as large. Scaling a selection that was not adds no slopes: its steps come out as rows
// of marks.

#pragma once

#include <cstdint>
#include <string>

#include "hosts/picture_files/picture.h"
#include "settings/effect_settings.h"

// How many times larger --supersample asks for; 1 for "". Ends the command when it is not 2 or 4.
int32_t parseSupersample(const std::string& text);

// Radius and relief so many times larger. Ends the command when the radius has no room for that.
void enlargeSettings(int32_t times, EffectSettings* settings);

// Every pixel so many times beside itself and below. As large as the selection, whose file was
// refused where that is too large.
HostPicture enlargedPicture(const HostPicture& picture, int32_t times);

// Mixes the enlarged effect into the picture: each sample becomes the mean of its own and the
// effect's by the selection, rounded once, in the picture's depth.
void mixEnlarged(const HostPicture& effect, const HostMask& mask, int32_t times, Picture* picture);
