// fast_field_state: what the field without stamps keeps from step to step.

#pragma once

#include <cstdint>

#include "vector/field/field_passes.h"

struct FastFieldState {
  uint8_t inUse;
  uint8_t haveMask;  // as the host said at set-up
  uint8_t soft;      // some pixel is partly selected
  uint8_t* mask;     // rows of maskStride bytes, 0 behind the last column
  uint64_t maskBytes;
  int64_t maskStride;

  FieldCone cone;
  FieldRow row;
  FieldStrip strip;
  int64_t work;      // pixels to be visited in phase 1, all scans together
  int64_t done;      // of these
  int32_t rowsLeft;  // of the first scan
  int32_t stripRow;  // next row of the strip to be taken
};
