// color_use: whether an effect shows colours, and pictures that have none.

#pragma once

#include <string>

#include "hosts/effect_choices/effect_choices.h"
#include "hosts/picture_files/picture.h"

// A grey picture as one of colours, which are all the same in a pixel.
void makeColorful(Picture* picture);

// The settings by which colours come into the picture, as a list; "" for none.
std::string colorsShown(const EffectSettings& settings, const FoundPictures& found);

// Tells that the colours of an effect are lost on a grey picture.
void warnOfLostColors(const EffectSettings& settings, const FoundPictures& found,
                      const Picture& picture, const std::string& file);

// Tells of lights that shine so little that nothing is seen: written in numbers up to 255.
void warnOfDarkLights(const EffectSettings& settings);
