// large_host: makes the open host's picture larger than anyone wants to hold: every row that is
// asked for is made up when it is delivered.

#pragma once

#include <cstdint>

// For the `prepare` of runDialog. RGB with a selection; nothing that is written is kept.
void enlargeHost(int16_t width, int16_t height);

// What the picture and its selection hold at a place.
uint8_t largeSample(int32_t x, int32_t y, int32_t plane);
uint8_t largeMask(int32_t x, int32_t y);
