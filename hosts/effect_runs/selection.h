// selection: which pixels the effect may change, from a grey picture or the picture's own alpha.

#pragma once

#include <string>

#include "hosts/picture_files/picture.h"

constexpr char kMaskByAlpha[] = "alpha";
constexpr char kMaskOfEverything[] = "none";

struct Selection {
  HostMask mask;          // one byte a pixel, 255 selected; empty when everything is
  std::string emptiness;  // that nothing is selected, and why; empty when something is
  // The alpha that is kept covers what it selects once more, so the effect stands whole there.
  bool byOwnAlpha = false;
};

// `mask` is a file, one of the two words above, or empty for the alpha channel if there is one.
Selection loadSelection(const std::string& mask, const Picture& picture, const std::string& file);

// What is told of a selection of nothing, which is no failure.
void warnOfEmptiness(const Selection& selection);
