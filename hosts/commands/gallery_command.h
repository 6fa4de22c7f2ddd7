// gallery_command: `morvalis gallery`, a sheet of one picture under every preset of a folder.

#pragma once

#include <string>
#include <vector>

#include "hosts/effect_runs/selection.h"

struct GalleryOptions {
  std::string image;
  MaskOptions mask;
  std::string presets;  // folder; empty: those that come with the program
  std::vector<std::string> assignments;
  std::string pictures;  // folder of the presets' pictures; empty: the usual one
  std::string output;
  std::string frame;   // of several pictures in one file; empty: the first
  bool limit = false;  // values beyond their ranges are limited
  bool color = false;  // a grey picture becomes one of colours
  std::string seed;    // empty: the clock's
  std::string jobs = "1";
  bool quiet = false;
};

int runGalleryCommand(const GalleryOptions& options);
