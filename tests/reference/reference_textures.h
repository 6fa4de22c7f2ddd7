// reference_textures: the generated texture pictures.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

// The random sequence that every generated texture draws from; the seed is the first state.
struct ReferenceRandom {
  uint32_t state;
};

int32_t referenceRandomNumber(ReferenceRandom& random);  // 0 to 32767

struct ReferenceTexture {
  std::vector<uint8_t> grey;  // 256 x 256
  int32_t width;              // the part in use; the relief wraps at these sizes
  int32_t height;
  std::array<int32_t, 256> tone;  // the tone curve that the picture was made with
};

// `choice` 1 to 12; the sequence is freshly seeded.
ReferenceTexture referenceTexture(int32_t choice, uint32_t seed);
