// picture: a picture file in memory, upright, 8 bits a sample, grey or RGB. Colours are never
// multiplied by alpha, and those under alpha 0 are kept.

#pragma once

#include <cstdint>
#include <vector>

#include "hosts/command_line/picture_metadata.h"
#include "hosts/substitute_host/substitute_host.h"

struct Picture {
  HostPicture colors;          // 1 or 3 planes
  std::vector<uint8_t> alpha;  // one byte a pixel; empty when the file has no alpha channel
  PictureMetadata metadata;
  bool sidesSwapped = false;  // turned by a quarter, as the file says
  int32_t sampleBits = 8;     // in the file
  int32_t pictureCount = 1;   // in the file; the first is taken
};
