// layer_pictures: a layer of GIMP and the selection as a picture in memory, and the effect back
// into the layer, as one step of undo.

#pragma once

#include <gegl.h>

#include "hosts/effect_runs/selection.h"
#include "hosts/gimp/gimp_types.h"

struct LayerPicture {
  Picture picture;      // as large as the layer, in 8 bits
  Selection selection;  // GIMP's, or the layer's transparency where nothing is selected
  GeglRectangle area;   // of the layer, what the effect can change
  bool mixes;           // GIMP mixes by its selection
};

// Ends the run when the layer is none that can be worked on. `whole`: also the pixels that no
// effect changes are fetched, for somebody to look at.
LayerPicture fetchLayer(GimpDrawableName drawable, bool whole);

// Puts the picture back, which the effect stands in. Samples that are not selected and transparency
// keep every bit, whatever the layer's precision.
void storeEffect(GimpDrawableName drawable, const LayerPicture& layer);
