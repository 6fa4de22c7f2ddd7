// selection: which pixels the effect may change, from a grey picture or the picture's own alpha.

#pragma once

#include <string>

#include "hosts/picture_files/picture.h"

constexpr char kMaskByAlpha[] = "alpha";
constexpr char kMaskOfEverything[] = "none";

struct Selection {
  HostMask mask;          // one byte a pixel, 255 selected; empty when everything is
  std::string emptiness;  // that nothing is selected, and why; empty when something is
  // What it selects is covered once more, by the alpha that is kept or by an editor that mixes: the
  // effect stands whole there, or edges would be softened twice.
  bool coversAgain = false;
};

// What the user says of the selection.
struct MaskOptions {
  std::string mask;      // a file, one of the two words above; empty: by alpha when there is one
  bool invert = false;   // what is selected and what is not change places
  bool fit = false;      // a mask of another size is made as large as the picture
  std::string feather;   // pixels over which its edge is softened; empty: none
  int32_t enlarged = 1;  // how many times the picture's size its file has
  std::string channel;   // of the mask's file, from 1; empty: its brightness
};

// Ends the command when a number is not what an option takes.
void checkMaskOptions(const MaskOptions& options);

// In the mask's name {name} stands for the picture's without its ending, {folder} for its folder.
Selection loadSelection(const MaskOptions& options, const Picture& picture,
                        const std::string& file);

// What is told of a selection of nothing, which is no failure.
void warnOfEmptiness(const Selection& selection);
