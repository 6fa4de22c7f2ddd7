// composition_passes: from the host's samples to source lanes, and from lit colours to samples.

#pragma once

#include "vector/shading_chunk.h"

constexpr int32_t kBlendStages = 12;

struct CompositionPasses {
  ShadingStage loadGrey;  // source, from pixels
  ShadingStage loadRgb;
  ShadingStage spread;        // what one channel cannot show the others take over; limits to 255
  ShadingStage spreadToGrey;  // the same, leaving one channel
  // By blend mode, from 1; null where the colour stays.
  ShadingStage blend[kBlendStages];
  ShadingStage checkerboard;  // white and light grey squares where nothing is selected
  ShadingStage storeGrey;     // pixels, from colour
  ShadingStage storeRgb;
};
