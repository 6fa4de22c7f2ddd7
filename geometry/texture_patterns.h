// texture_patterns: the row generators of the built-in textures.

#pragma once

#include <cstdint>

struct SessionRecord;

// Writes one row (0 to 255) of the texture picture with the generator of the pattern type; nothing
// without a texture picture or for a type without a generator.
void generateTextureRow(SessionRecord* session, int32_t row);
