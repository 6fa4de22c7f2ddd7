// raster: pictures in memory, and drawing into them with smooth edges. Everything is computed with
// rounded additions, products, quotients and square roots only, so that every machine draws the
// same bytes.

#pragma once

#include <cstdint>
#include <functional>
#include <vector>

struct Rgb {
  double red;  // 0 to 255
  double green;
  double blue;
};

struct Picture {
  int32_t width;  // pixels
  int32_t height;
  std::vector<uint8_t> rgb;    // rows from the top
  std::vector<uint8_t> alpha;  // 0 to 255 a pixel; empty: opaque
  int32_t scale = 100;         // pixels of 100 units: shapes, boxes and lines are given in units
};

// Left and top belong to the box, right and bottom do not.
struct Box {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
};

// The scale of the pictures that are drawn for the dialogs, percent.
void drawAtScale(int32_t scale);
int32_t drawnScale();

// Of so many pixels, at 100 percent: what is reduced or resampled later.
Picture newPicture(int32_t width, int32_t height, Rgb ground);
Picture newTransparentPicture(int32_t width, int32_t height);

// Of so many units, at the scale of the dialogs.
Picture newScaledPicture(int32_t width, int32_t height, Rgb ground);
Picture newScaledTransparentPicture(int32_t width, int32_t height);

// The first pixel of a unit, and the width of a line in pixels.
int32_t pixelOf(const Picture& picture, int32_t unit);
int32_t penOf(const Picture& picture);

// Single pixels.
Rgb pixelAt(const Picture& picture, int32_t x, int32_t y);
void setPixel(Picture* picture, int32_t x, int32_t y, Rgb colour);  // beyond the edges: nothing
void blendPixel(Picture* picture, int32_t x, int32_t y, Rgb colour, double coverage);

// A line is a pen wide, wherever it stands. A frame lies within its box.
void fillBox(Picture* picture, const Box& box, Rgb colour);
void frameBox(Picture* picture, const Box& box, Rgb topLeft, Rgb bottomRight);
void fillPixels(Picture* picture, const Box& pixels, Rgb colour);
void framePixels(Picture* picture, const Box& pixels, Rgb topLeft, Rgb bottomRight);
Box pixelsOf(const Picture& picture, const Box& box);
void horizontalLine(Picture* picture, int32_t left, int32_t right, int32_t y, Rgb colour);
void verticalLine(Picture* picture, int32_t x, int32_t top, int32_t bottom, Rgb colour);

// Whether a point belongs to a shape; unit (x, y) covers x to x + 1 and y to y + 1.
using Shape = std::function<bool(double x, double y)>;
using Paint = std::function<Rgb(double x, double y)>;

void fillShape(Picture* picture, const Shape& shape, Rgb colour);
void fillShape(Picture* picture, const Shape& shape, const Paint& paint);
// The average of the paint over each pixel of the box.
void fillPaint(Picture* picture, const Box& box, const Paint& paint);

// How far a shape covers each pixel, 0 to 255, from samples x samples points a pixel.
std::vector<uint8_t> coverageOf(const Shape& shape, int32_t width, int32_t height, int32_t samples);

Shape discShape(double x, double y, double radius);
Shape ringShape(double x, double y, double inner, double outer);
Shape lineShape(double x0, double y0, double x1, double y1, double halfWidth);  // round ends
Shape roundedBoxShape(double left, double top, double right, double bottom, double radius);

struct Spot {
  double x;
  double y;
};
Shape polygonShape(std::vector<Spot> corners);
Shape eitherShape(Shape a, Shape b);
Shape bothShape(Shape a, Shape b);

Picture croppedPicture(const Picture& picture, const Box& box);  // in units
void pastePicture(Picture* picture, const Picture& piece, int32_t x, int32_t y);
// Each square of side x side pixels becomes one.
Picture reducedPicture(const Picture& picture, int32_t side);
// Of another size in pixels: the average of what each pixel covers, or between pixels where there
// are to be more of them.
Picture resampledPicture(const Picture& picture, int32_t width, int32_t height);

inline Rgb mixed(Rgb a, Rgb b, double part) {
  return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part,
          a.blue + (b.blue - a.blue) * part};
}

// Sine and cosine in full turns, from a series that rounds alike everywhere.
double sineOfTurn(double turns);
double cosineOfTurn(double turns);

// 0 up to `low`, 1 from `high` on, smooth between.
double smoothRise(double low, double high, double value);

// Smooth noise of the plane, -1 to 1, of one unit's fineness.
double smoothNoise(double x, double y, uint32_t seed);
