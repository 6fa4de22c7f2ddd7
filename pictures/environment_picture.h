// environment_picture: the picture that the metal reflects: 64 x 64 pixels at the top left of a
// 128 x 128 surface, its rip-map in the rest.

#pragma once

#include <cstdint>

struct PictureSurface;
struct SessionRecord;

constexpr int32_t kEnvironmentSide = 64;          // pixels
constexpr int32_t kEnvironmentSurfaceSide = 128;  // pixels, with the rip-map

// Resamples a `.bmp` file into the picture and rebuilds the rip-map. 0, or 99 with the picture as
// it was.
int32_t loadEnvironmentPicture(SessionRecord* session, const char* path);

// Turns the picture clockwise by environmentTurns (1 to 3) quarters and rebuilds the rip-map.
void applyEnvironmentTurns(SessionRecord* session);

// Turns the 64 x 64 picture a quarter clockwise, in place.
void rotateEnvironmentQuarter(PictureSurface* surface);
