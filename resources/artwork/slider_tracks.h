// slider_tracks: the grooves that the thumbs run in, each with a picture of what its slider
// changes from left to right.

#pragma once

#include "resources/artwork/drawing/raster.h"

Picture drawRadiusTrack();
Picture drawHeightTrack();
Picture drawTextureTrack();
Picture drawTextureSizeTrack();
Picture drawGlossTrack();
Picture drawGlareTrack();
Picture drawReflectionTrack();
Picture drawGlassinessTrack();
Picture drawCausticTrack();
Picture drawIridescenceTrack();
Picture drawFilmColoursTrack();
Picture drawTarnishTrack();

Picture drawThumb(bool enabled);  // 12 x 10
