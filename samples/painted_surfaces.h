// painted_surfaces: pictures computed pixel by pixel, as a camera might have taken them.

#pragma once

#include <QImage>

// Old boards under a soft light from the upper left.
QImage paintBoards(int width, int height);

// A slab of slate, in grey.
QImage paintSlate(int width, int height);

// What shining surfaces mirror: 128 x 128 pixels, sky above, ground below.
QImage paintSkyEnvironment();
QImage paintCopperEnvironment();
QImage paintStudioEnvironment();

// Pictures for the relief, 256 x 256 pixels, seamless; white stands out.
QImage paintLeatherRelief();
QImage paintHammeredRelief();
