// mask_softening: a selection whose edge runs out over some pixels.

#pragma once

#include "hosts/substitute_host/substitute_host.h"

constexpr int kLargestFeather = 250;  // pixels

// Three running means one after the other, along rows and columns: nearly a bell curve of about
// that many pixels on either side of an edge.
void softenMask(int32_t width, int32_t height, int pixels, HostMask* mask);
