// button_faces: the pictures on the picture buttons and in the two toggles.

#pragma once

#include "resources/artwork/drawing/raster.h"

Picture drawSaveFace();
Picture drawLoadFace();
Picture drawSpinFace();
Picture drawRandomizeFace();

Picture drawCheckToggle(bool on, bool pressed);
Picture drawCausticToggle(bool grey, bool pressed);
