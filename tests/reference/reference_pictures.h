// reference_pictures: the environment with its rip-map, the resampling of picture files, and the
// texture surface.

#pragma once

#include <cstdint>
#include <vector>

// Red, green and blue of 64 x 64 pixels from a picture of any size: each the mean of the area it
// covers, partly covered pixels by their share, rounded to nearest, halves up.
std::vector<uint8_t> referenceResample(int32_t width, int32_t height,
                                       const std::vector<uint8_t>& rgb);

// The 128 x 128 surface of a 64 x 64 picture after `turns` quarter turns clockwise. Other numbers
// of turns than 1, 2 and 3 do not turn it. Column and row 127 stay black.
std::vector<uint8_t> referenceRipMap(const std::vector<uint8_t>& environment, int32_t turns);

// The 256 x 256 grey surface of a texture file at most 256 x 256 large: drawn at the top left and,
// where it is smaller than 64 x 64, repeated over that square. Empty: the built-in grey square.
std::vector<uint8_t> referenceTextureSurface(int32_t width, int32_t height,
                                             const std::vector<uint8_t>& grey);

// 255 minus each pixel of the surface.
std::vector<uint8_t> referenceTextureTable(const std::vector<uint8_t>& surface);
