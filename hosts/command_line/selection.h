// selection: which pixels the effect may change, from a grey picture or the picture's own alpha.

#pragma once

#include <string>

#include "hosts/command_line/picture.h"

constexpr char kMaskByAlpha[] = "alpha";
constexpr char kMaskOfEverything[] = "none";

// One byte a pixel, 255 selected; empty when everything is. `mask` is a file, one of the two words
// above, or empty for the alpha channel if there is one.
HostMask loadSelection(const std::string& mask, const Picture& picture, const std::string& file);
