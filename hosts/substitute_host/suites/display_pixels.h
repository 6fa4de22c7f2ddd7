// display_pixels: the service that shows a preview.

#pragma once

#include "entry/host_interface.h"

// Null when the switches withhold it.
DisplayPixelsProc offerDisplayPixels();
