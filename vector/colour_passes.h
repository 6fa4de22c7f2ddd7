// colour_passes: from the lights' shares to the lit colour of every column. Stages that a setting
// switches off are left out; the others run in this order.

#pragma once

#include "vector/shading_chunk.h"

struct ColourPasses {
  ShadingStage oneLight;   // colour: the source lit, and highlights
  ShadingStage twoLights;  // the same for both
  // adds the environment that is mirrored: first what each column sees, then the samples.
  ShadingStage reflection;
  ShadingStage film;     // tints by steepness
  ShadingStage glass;    // adds light through the glass and light gathered behind it
  ShadingStage behind;   // adds the environment seen through the glass; needs `reflection`
  ShadingStage tarnish;  // lays lit tarnish over the colour
  // Instead of all those: the gathered light, or the amount of tarnish.
  ShadingStage causticAlone;
  ShadingStage tarnishAlone;
};
