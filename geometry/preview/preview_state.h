// preview_state: what the preview knows beside the render that it runs. All rectangles are the
// host's, divided by the preview's factor.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

// The selection of the whole picture at full size.
struct MaskCopy {
  uint8_t* samples;  // row after row, without gaps
  uint64_t bytes;
  uint8_t tried;  // a host that could not deliver it is not asked again
  uint8_t whole;
  uint8_t inUse;  // the passes read it instead of what the host has delivered last
};

// The height field as it was smoothed last, still in its buffer.
struct KeptField {
  uint8_t valid;
  uint8_t haveMask;
  Rectangle rect;
  int32_t scale;
  int32_t radius;  // effective
};

// Where the rendered rectangle lies within the picture, and what of it is shaded.
struct PreviewPlace {
  uint8_t onCutOut;  // the passes work on the cut-out
  uint8_t placed;    // relief and checkerboard count from the picture's corner
  int32_t left;
  int32_t top;

  // Columns and rows that are there for their neighbours alone.
  int32_t columnsBefore;
  int32_t rowsBefore;
  int32_t rowsBehind;
};

struct PreviewState {
  uint8_t wide;           // the selection is known around the frame
  uint8_t marginRefused;  // by this host
  Rectangle picture;
  Rectangle frame;       // what is shown
  Rectangle maskRegion;  // where the selection is known
  MaskCopy maskCopy;
  KeptField kept;

  // The part of the field that is shaded, cut out so that the field itself can be kept.
  int16_t* cutOut;
  uint64_t cutOutBytes;

  PreviewPlace place;  // all zero in the final render
};
