// gallery_command: `morvalis gallery`, a sheet of one picture under every preset of a folder.

#pragma once

#include <string>

struct GalleryOptions {
  std::string image;
  std::string mask;      // empty: by alpha when there is an alpha channel
  std::string presets;   // folder
  std::string pictures;  // folder of the presets' pictures; empty: the usual one
  std::string output;
  std::string seed;  // empty: the clock's
  std::string jobs = "1";
  bool quiet = false;
};

int runGalleryCommand(const GalleryOptions& options);
