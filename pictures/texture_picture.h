// texture_picture: the picture pressed into the surface as a relief: up to 256 x 256 pixels at the
// top left of a surface of that size. Only the green channel is read.

#pragma once

#include <cstdint>

struct SessionRecord;

constexpr int32_t kTextureSampleSide = 64;  // pixels that the dialog shows

// Loads a `.bmp` file at its own size and repeats a small one over the square that the dialog
// shows. 0, or 99 with the pixels as they were; textureWidth and textureHeight are 64 then.
int32_t loadTexturePicture(SessionRecord* session, const char* path);
