// builtin_pictures: the pictures that the module brings along.

#pragma once

#include <cstdint>

struct PictureSurface;

constexpr int32_t kBuiltInSide = 64;  // pixels
constexpr uint8_t kBuiltInTextureGrey = 188;

// Draws the built-in environment (a warm golden studio) into the top-left 64 x 64 square.
void drawBuiltInEnvironment(PictureSurface* surface);

// Draws the built-in plain texture into the top-left 64 x 64 square.
void drawBuiltInTexture(PictureSurface* surface);
