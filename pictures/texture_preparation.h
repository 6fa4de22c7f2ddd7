// texture_preparation: generates the built-in textures: what each choice means to its row
// generator, the generators' tables, the loop over the rows, and the seam of the walk.

#pragma once

#include <cstdint>

struct SessionRecord;

// Generates the texture of textureChoice; nothing for the picture file.
void prepareTexture(SessionRecord* session);

// Needs the render buffers and the texture surface; does nothing without either.
void generateTexture(SessionRecord* session);

// The steps of generateTexture.
void setUpPattern(SessionRecord* session);
void buildToneTable(uint32_t variant, SessionRecord* session);
void blendTextureSeam(SessionRecord* session, int32_t n);
