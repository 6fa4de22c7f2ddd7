// engine_runs: what the effect itself has to show: renders of a selection, generated textures,
// film colours, profiles.

#pragma once

#include <cstdint>
#include <vector>

#include "resources/artwork/drawing/raster.h"
#include "settings/effect_settings.h"

// The defaults, but a smooth surface and nothing that passes light or films it.
EffectSettings smoothSettings();

// A polished gold: the built-in environment mirrored.
EffectSettings goldSettings();

// The radius setting for a bevel so many pixels wide; beyond 50 the setting counts twice.
int32_t radiusFor(int32_t pixels);

// The source with the effect where the selection covers it.
// coverage: 0 to 255 a pixel; both of the same size.
Picture renderedPicture(const Picture& source, const std::vector<uint8_t>& coverage,
                        const EffectSettings& settings);

// Puts an object of one colour on a ground, lit by the effect.
void raiseObject(Picture* ground, const std::vector<uint8_t>& coverage, Rgb colour,
                 const EffectSettings& settings);

// The texture of a choice, 256 x 256; always the same.
Picture generatedTexture(int32_t textureChoice);

// Colours of a film on silver by slope class, 90 of them.
std::vector<Rgb> filmColours(int32_t iridescence, int32_t iriColors);

// Height of a shape's cross-section from the edge (first) inward, 0 to 1.
std::vector<double> profileHeights(int32_t shape);
