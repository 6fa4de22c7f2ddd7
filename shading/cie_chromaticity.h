// cie_chromaticity: the CIE 1931 2-degree standard observer's chromaticities of monochromatic
// light, 380 to 780 nm in steps of 5.

#pragma once

#include "shading/shading_tables.h"

struct Chromaticity {
  float x;
  float y;
};

extern const Chromaticity kCieChromaticity[kSpectrumEntries];
