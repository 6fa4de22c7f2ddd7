#include "shading/compose_pixel.h"

// Shares kept above 256, in 1/256.
constexpr int32_t kTarnishRest = 150;
constexpr int32_t kExcessShare = 150;

// What a channel's over-exposure counts, by how bright it looks.
constexpr int32_t kRedExcess = 3;
constexpr int32_t kGreenExcess = 6;

static RgbWord litBy(const RgbWord& surface, Word32 diffuse, const RgbWord& light) {
  return (surface * diffuse * light) >> 16;
}

static void addTarnish(const LitPixel& lit, const RowLights& lights, RgbWord* colour) {
  const Word32 diffuse1 = compressed(larger(lit.diffuse1, 0), kTarnishRest);
  const Word32 diffuse2 = compressed(larger(lit.diffuse2, 0), kTarnishRest);
  const RgbWord tarnish = litBy(lights.tarnish, diffuse1, lights.light1) +
                          litBy(lights.tarnish, diffuse2, lights.light2);
  *colour = (*colour * (Word32(256) - lit.tarnish) + tarnish * lit.tarnish) >> 8;
}

static RgbWord causticAlone(const LitPixel& lit, const RowLights& lights) {
  return (lit.source * lights.light1 * lit.caustic1 + lit.source * lights.light2 * lit.caustic2) >>
         16;
}

// What one channel cannot show the others take over.
static void spreadOverExposure(RgbWord* colour) {
  const bool red = colour->red > 255;
  const bool green = colour->green > 255;
  const bool blue = colour->blue > 255;
  const int marked = red + green + blue;
  if (marked == 0 || marked == 3) return;
  Word32 excess = 0;
  if (red) excess += Word32(kRedExcess) * (colour->red - 255);
  if (green) excess += Word32(kGreenExcess) * (colour->green - 255);
  if (blue) excess += colour->blue - 255;
  excess = excess * kExcessShare >> 8;
  const Word32 share = marked == 1 ? excess >> 1 : excess;
  if (!red) colour->red += share;
  if (!green) colour->green += share;
  if (!blue) colour->blue += share;
}

// o: the finished value, s: the source sample, w: the procedural weight of s. All 0 to 255.
using BlendProcedure = Word32 (*)(Word32 o, Word32 s, Word32 w);

static Word32 blendNormal(Word32 o, Word32, Word32) {
  return o;
}
static Word32 blendProceduralPlus(Word32 o, Word32 s, Word32 w) {
  return (w * o + (Word32(255) - w) * s) >> 8;
}
static Word32 blendProceduralMinus(Word32 o, Word32 s, Word32) {
  return smaller(o + (s * o >> 8), 255);
}
static Word32 blendDifference(Word32 o, Word32 s, Word32) {
  return (s * (Word32(255) - o) + o * (Word32(255) - s)) >> 8;
}
static Word32 blendLighten(Word32 o, Word32 s, Word32) {
  return larger(s, o);
}
static Word32 blendDarken(Word32 o, Word32 s, Word32) {
  return smaller(s, o);
}
static Word32 blendAdd(Word32 o, Word32 s, Word32) {
  return smaller(o + s, 255);
}
static Word32 blendSubtract(Word32 o, Word32 s, Word32) {
  return larger(o - s, 0);
}
static Word32 blendMultiply(Word32 o, Word32 s, Word32) {
  return o * s >> 8;
}
static Word32 blendScreen(Word32 o, Word32 s, Word32) {
  return o + (s * (Word32(255) - o) >> 8);
}

// By blend mode, from 1. Tarnish and caustic have replaced the value before this.
constexpr BlendProcedure kBlendModes[kBlendModeCaustic] = {
    blendNormal,     blendProceduralPlus, blendProceduralMinus,
    blendDifference, blendLighten,        blendDarken,
    blendAdd,        blendSubtract,       blendMultiply,
    blendScreen,     blendNormal,         blendNormal};

static uint8_t blended(int32_t blendMode, const int16_t* proceduralWeight, Word32 o, Word32 s) {
  if (blendMode < 1 || blendMode > kBlendModeCaustic) return static_cast<uint8_t>(o.value);
  const Word32 weight = proceduralWeight[s.value];
  return static_cast<uint8_t>(kBlendModes[blendMode - 1](o, s, weight).value);
}

void composePixel(const LitPixel& lit, const RowLights& lights, int32_t blendMode,
                  const int16_t* proceduralWeight, bool grey, uint8_t* samples) {
  RgbWord colour = lit.colour;
  if (!(lit.tarnish == 0)) addTarnish(lit, lights, &colour);
  if (blendMode == kBlendModeCaustic) colour = causticAlone(lit, lights);
  if (blendMode == kBlendModeTarnish) colour = {lit.tarnish, lit.tarnish, lit.tarnish};
  spreadOverExposure(&colour);
  if (grey) {
    const Word32 level =
        (Word32(77) * colour.red + Word32(151) * colour.green + Word32(28) * colour.blue) >> 8;
    samples[0] = blended(blendMode, proceduralWeight, smaller(level, 255), lit.source.red);
    return;
  }
  samples[0] = blended(blendMode, proceduralWeight, smaller(colour.red, 255), lit.source.red);
  samples[1] = blended(blendMode, proceduralWeight, smaller(colour.green, 255), lit.source.green);
  samples[2] = blended(blendMode, proceduralWeight, smaller(colour.blue, 255), lit.source.blue);
}
