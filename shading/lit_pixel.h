// lit_pixel: what the shading core hands on to the composition.

#pragma once

#include <cstdint>

#include "services/fixed_point.h"

struct RgbWord {
  Word32 red;
  Word32 green;
  Word32 blue;
};

struct LitPixel {
  RgbWord colour;   // unbounded
  RgbWord source;   // 0 to 255
  Word32 diffuse1;  // 256 on flat ground
  Word32 diffuse2;
  RgbWord caustic1;
  RgbWord caustic2;
  Word32 tarnish;  // 0 to 256
};

// What holds for all pixels of a row.
struct RowLights {
  RgbWord light1;  // 0 to 255 a channel
  RgbWord light2;
  RgbWord tarnish;
};

inline RgbWord operator+(const RgbWord& a, const RgbWord& b) {
  return {a.red + b.red, a.green + b.green, a.blue + b.blue};
}
inline RgbWord operator*(const RgbWord& a, const RgbWord& b) {
  return {a.red * b.red, a.green * b.green, a.blue * b.blue};
}
inline RgbWord operator*(const RgbWord& a, Word32 b) {
  return {a.red * b, a.green * b, a.blue * b};
}
inline RgbWord operator>>(const RgbWord& a, int bits) {
  return {a.red >> bits, a.green >> bits, a.blue >> bits};
}

// Above 256 only the share `rest` (in 1/256) of what exceeds it is kept.
constexpr Word32 compressed(Word32 value, int32_t rest) {
  return value > 256 ? Word32(256) + ((value - 256) * rest >> 8) : value;
}
