// field_run: the height field of a mask by the product's own passes, up to the border fill.

#pragma once

#include <cstdint>
#include <vector>

#include "tests/support/hosts/session_fixture.h"

struct FieldRun {
  SessionFixture fixture;
  std::vector<uint8_t> mask;  // empty: everything is selected
};

// Takes the geometry of the mask and the radius, 1 to 150 pixels.
void prepareFieldRun(FieldRun* run, std::vector<uint8_t> mask, int32_t width, int32_t height,
                     int32_t radius);

// All steps of both passes, with the instruction set that is chosen now. Any number of times.
void runField(FieldRun* run);

std::vector<int16_t> fieldCellsOf(FieldRun* run);
