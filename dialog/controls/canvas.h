// canvas: drawing into the pixels of a window: lines, fills, pictures, text, each at the scale of
// the dialog; places are pixels. Everything stays within the clip rectangle. A rectangle excludes
// its right and bottom sides, but for a bevel, whose four sides are the pixels that it names.

#pragma once

#include <cstdint>

#include "platform/window.h"
#include "services/rectangle.h"

struct Rgb8 {
  uint8_t red;
  uint8_t green;
  uint8_t blue;
};

constexpr Rgb8 kBlack = {0, 0, 0};
constexpr Rgb8 kWhite = {255, 255, 255};
constexpr Rgb8 kDisabledText = {175, 175, 175};
constexpr Rgb8 kValueGround = {238, 238, 238};
constexpr Rgb8 kButtonFace = {222, 222, 222};
constexpr Rgb8 kDarkBevel = {128, 128, 128};
constexpr Rgb8 kLightBevel = {240, 240, 240};

struct Canvas {
  PixelTarget target;
  Rectangle clip;
};

void fillArea(Canvas* canvas, const Rectangle& area, Rgb8 colour);

// From one point to another, without the last pixel; a pen wide, to the right and down.
void drawLine(Canvas* canvas, int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb8 colour);

// Frame a pen wide: left and top in the first colour, right and bottom in the second.
void drawBevel(Canvas* canvas, const Rectangle& rect, Rgb8 topLeft, Rgb8 bottomRight);

// A dotted frame that inverts what is under it: to be drawn once over fresh pixels.
void drawFocusFrame(Canvas* canvas, const Rectangle& rect);

// A bitmap or an icon of the module's resources; nothing when there is none of that number.
void drawResource(Canvas* canvas, int32_t id, int32_t x, int32_t y);
void drawIcon(Canvas* canvas, int32_t id, int32_t x, int32_t y);

// Pixels of three bytes, `stride` bytes from row to row.
void drawPixels(Canvas* canvas, int32_t x, int32_t y, int32_t width, int32_t height,
                const uint8_t* rgb, int32_t stride);

void drawText(Canvas* canvas, const char* text, int32_t x, int32_t y, Rgb8 colour);
