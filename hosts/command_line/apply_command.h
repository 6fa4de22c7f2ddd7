// apply_command: `morvalis apply`, the filter on a picture file.

#pragma once

#include <optional>
#include <string>
#include <vector>

struct ApplyOptions {
  std::string image;
  std::string output;
  std::string mask;  // empty: by alpha when there is an alpha channel
  std::vector<std::string> assignments;
  std::string environment;  // empty: none
  std::string texture;      // empty: none
  std::string seed;         // empty: the clock's
  bool quiet = false;
};

int runApplyCommand(const ApplyOptions& options);
