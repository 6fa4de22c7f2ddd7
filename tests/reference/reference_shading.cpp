#include "tests/reference/reference_shading.h"

#include <algorithm>

#include "tests/reference/reference_number.h"

namespace {

using Int = ReferenceInt;

constexpr int32_t kSurfaceSide = 128;

struct Constants {
  Int lights[2][3];  // colours, 0 to 255
  Int tarnishColor[3];
  bool light2On;
  Int glass;  // in 1/256
  Int transmitScale;
  bool reflectOn;
  Int glareWidth;
  Int glossScale;
  Int glossDiv;
  Int elevations[2];
  Int edgeHeight;
  Int depthSpan;
  Int hRef;
  Int slopeRef;
  Int causticGain;
  Int causticSharp;
  Int causticFloor;
};

void splitColor(const Color16& color, Int (&channels)[3]) {
  channels[0] = color.red >> 8;
  channels[1] = color.green >> 8;
  channels[2] = color.blue >> 8;
}

Constants buildConstants(const ReferenceScene& scene) {
  const EffectSettings& s = scene.settings;
  const Int reflectWeight = scene.tables.reflectWeight;
  const Int height = s.height;
  Constants k;
  splitColor(s.light1Color, k.lights[0]);
  splitColor(s.light2Color, k.lights[1]);
  splitColor(s.tarnishColor, k.tarnishColor);
  k.light2On = k.lights[1][0] > 0 || k.lights[1][1] > 0 || k.lights[1][2] > 0;
  k.glass = (Int(s.glassiness) * 256) / 100;
  k.transmitScale = 256 - ((reflectWeight * reflectWeight) >> 8);
  k.reflectOn = s.reflection != 0;
  k.glareWidth = (Int(s.glare) * 3) / 2;
  k.glossScale = Int(s.gloss) * 5;
  k.glossDiv = k.glareWidth * 75;
  k.elevations[0] = scene.tables.lights[0].elevation;
  k.elevations[1] = scene.tables.lights[1].elevation;
  k.edgeHeight = scene.profile.heights[3000];
  const Int deepest = -Int(scene.profile.depthLow);
  k.depthSpan = magnitude((2 * deepest) / 3);
  if (k.depthSpan == 0) k.depthSpan = 1;
  k.hRef = magnitude(height) + 20;
  k.slopeRef = atLeast(magnitude((height * 300) / 45), k.hRef);
  const Int hClamp = atMost(atLeast(magnitude(height), 1), 35);
  k.causticGain = (k.glass * s.caustic) / 75;
  k.causticSharp = Int(8960) / hClamp;
  k.causticFloor = ((35 - hClamp) * (35 - hClamp) * 255) / 1225;
  return k;
}

struct Block {
  Int h00, h01, h10, h11;
};

Int dot(const ReferenceStencil& w, const Block& b) {
  return (w[0] * b.h00 + w[1] * b.h01 + w[2] * b.h10 + w[3] * b.h11) / 256;
}

// The same stencil on the block turned a quarter.
Int turnedDot(const ReferenceStencil& w, const Block& b) {
  return -((w[1] * b.h00 + w[3] * b.h01 + w[0] * b.h10 + w[2] * b.h11) / 256);
}

struct Lit {
  Int d, diff, caustic, back, front, shade, trans;
};

Int highlight(const Constants& k, Int s, Int t, Int elevation) {
  const Int a = k.glareWidth - magnitude(s - elevation);
  if (a <= 0) return 0;
  const Int b = k.glareWidth - magnitude(t - elevation);
  if (b <= 0) return 0;
  return (k.glossScale * a * b) / k.glossDiv;
}

Lit lightBlock(const Constants& k, const ReferenceTables& tables, const Block& block,
               const ReferenceStencil& mainStencil, const ReferenceStencil& sideStencil,
               const ReferenceStencil& causticStencil, Int elevation) {
  Lit lit;
  lit.d = dot(mainStencil, block);
  lit.diff = lit.d + 256;
  const Int s = dot(sideStencil, block);
  const Int t = turnedDot(sideStencil, block);
  if (lit.diff <= 256) {
    Int c = magnitude(dot(causticStencil, block));
    c = (c * k.causticSharp) >> 8;
    Int q = atLeast(255 - c - k.causticFloor, 0);
    q = (q * q) >> 6;
    lit.caustic = (k.causticGain * q) >> 8;
    lit.back = highlight(k, -s, -t, elevation);
  } else {
    lit.front = highlight(k, s, t, elevation);
  }
  lit.shade = (lit.diff * (256 - k.glass)) >> 8;
  if (lit.shade < 0) {
    lit.shade = 0;
  } else {
    if (lit.shade > 256) lit.shade = 256 + (((lit.shade - 256) * 171) >> 8);
    lit.shade = (lit.shade * tables.reflectRest) >> 8;
  }
  return lit;
}

Int transmission(const Constants& k, const Lit& lit, Int h00) {
  const Int x = ((lit.back * 171) >> 8) - lit.d;
  Int trans = 0;
  if (x >= 0) {
    const Int depth = atMost(magnitude(k.edgeHeight - h00), k.depthSpan);
    trans = (x * depth) / k.depthSpan;
  }
  if (trans > 256) trans = 256 + (((trans - 256) * 171) >> 8);
  return trans;
}

Int slopeOf(Int dx, Int dy) {
  const Int m = atLeast(magnitude(dx), magnitude(dy));
  const Int n = atMost(magnitude(dx), magnitude(dy));
  const Int e1 = (magnitude(dx + dy) * 181) >> 8;
  const Int e2 = (magnitude(dx - dy) * 181) >> 8;
  return m + (n >> 1) + atLeast(atLeast(m, e1), e2);
}

// 0 to 63: where on the environment picture a gradient looks.
Int environmentCoordinate(const ReferenceTables& tables, Int gradient) {
  const Int g = atMost(atLeast(gradient, -1999), 1999);
  const Int angle = tables.reflectionAngle[magnitude(g).value];
  const Int position = g >= 0 ? 512 + angle : 512 - angle;
  return atMost(atLeast(position, 0), 1023) >> 4;
}

Int environmentSample(const ReferenceScene& scene, Int u, Int v, Int levelX, Int levelY,
                      int32_t channel) {
  const Int x = (u >> static_cast<int>(levelX.value)) + scene.tables.ripOffsets[levelX.value];
  const Int y = (v >> static_cast<int>(levelY.value)) + scene.tables.ripOffsets[levelY.value];
  return scene.environmentSurface[(y.value * kSurfaceSide + x.value) * 3 + channel];
}

void spreadOverExposure(Int (&color)[3]) {
  Int excess = 0;
  const bool red = color[0] > 255;
  const bool green = color[1] > 255;
  const bool blue = color[2] > 255;
  if (red) excess += 3 * (color[0] - 255);
  if (green) excess += 6 * (color[1] - 255);
  if (blue) excess += color[2] - 255;
  excess = (excess * 150) >> 8;
  const int32_t marked = red + green + blue;
  if (marked == 0 || marked == 3) return;
  const Int share = marked == 1 ? excess >> 1 : excess;
  if (!red) color[0] += share;
  if (!green) color[1] += share;
  if (!blue) color[2] += share;
}

Int blended(int32_t mode, Int o, Int s, Int w) {
  switch (mode) {
    case 2:
      return (w * o + (255 - w) * s) >> 8;
    case 3:
      return atMost(o + ((s * o) >> 8), 255);
    case 4:
      return (s * (255 - o) + o * (255 - s)) >> 8;
    case 5:
      return atLeast(o, s);
    case 6:
      return atMost(o, s);
    case 7:
      return atMost(o + s, 255);
    case 8:
      return atLeast(o - s, 0);
    case 9:
      return (o * s) >> 8;
    case 10:
      return o + ((s * (255 - o)) >> 8);
    default:
      return o;
  }
}

uint8_t writtenByte(const ReferenceScene& scene, Int result, int32_t c, int32_t r) {
  if (scene.settings.previewMode == 0) return static_cast<uint8_t>(result.value);
  const Int m = referenceMaskValue(scene.mask, c, r);
  const Int checker = ((r ^ c) & 8) == 0 ? 255 : 204;
  return static_cast<uint8_t>(((result * m + checker * (255 - m)) >> 8).value);
}

// The tarnish colour, lit by both lights, over the lit colour.
void applyTarnish(const Constants& k, Int amount, const Lit (&lit)[2], Int (&color)[3]) {
  Int diff[2];
  for (int32_t n = 0; n < 2; ++n) {
    diff[n] = atLeast(lit[n].diff, 0);
    if (diff[n] > 256) diff[n] = 256 + (((diff[n] - 256) * 150) >> 8);
  }
  for (int32_t n = 0; n < 3; ++n) {
    const Int tarnish = ((k.tarnishColor[n] * diff[0] * k.lights[0][n]) >> 16) +
                        ((k.tarnishColor[n] * diff[1] * k.lights[1][n]) >> 16);
    color[n] = (color[n] * (256 - amount) + tarnish * amount) >> 8;
  }
}

void composePixel(const ReferenceScene& scene, const Constants& k, int32_t c, int32_t r,
                  Int tarnish, const Int (&samples)[3], const Lit (&lit)[2],
                  const Int (&caustics)[2][3], Int (&color)[3], uint8_t* target) {
  const int32_t mode = scene.settings.blendMode;
  if (!(tarnish == 0)) applyTarnish(k, tarnish, lit, color);
  for (int32_t n = 0; n < 3; ++n) {
    if (mode == kBlendModeCaustic) {
      color[n] = (samples[n] * k.lights[0][n] * caustics[0][n] +
                  samples[n] * k.lights[1][n] * caustics[1][n]) >>
                 16;
    }
    if (mode == kBlendModeTarnish) color[n] = tarnish;
  }
  spreadOverExposure(color);

  if (scene.planes < 3) {
    const Int grey = atMost((77 * color[0] + 151 * color[1] + 28 * color[2]) >> 8, 255);
    const Int weight = scene.tables.proceduralWeight[samples[0].value];
    target[0] = writtenByte(scene, blended(mode, grey, samples[0], weight), c, r);
    return;
  }
  for (int32_t n = 0; n < 3; ++n) {
    const Int weight = scene.tables.proceduralWeight[samples[n].value];
    const Int result = blended(mode, atMost(color[n], 255), samples[n], weight);
    target[n] = writtenByte(scene, result, c, r);
  }
}

// What one pixel leaves for the next one and for the pixel below it.
struct Looked {
  Int previousU;
  std::vector<Int> previousV;  // by column
};

void shadePixel(const ReferenceScene& scene, const Constants& k, int32_t c, int32_t r, Int tarnish,
                Looked& looked, const uint8_t* pixel, uint8_t* target) {
  const ReferenceTables& tables = scene.tables;
  const ReferenceField& field = scene.field;
  const Block block = {referenceCell(field, c, r), referenceCell(field, c + 1, r),
                       referenceCell(field, c, r + 1), referenceCell(field, c + 1, r + 1)};
  Lit lit[2];
  lit[0] = lightBlock(k, tables, block, tables.stencils[kReferenceMain1],
                      tables.stencils[kReferenceSide1], tables.stencils[kReferenceCaustic1],
                      k.elevations[0]);
  if (k.light2On) {
    lit[1] = lightBlock(k, tables, block, tables.stencils[kReferenceMain2],
                        tables.stencils[kReferenceSide2], tables.stencils[kReferenceCaustic2],
                        k.elevations[1]);
  }

  const Int dx = block.h01 - block.h00;
  const Int dy = block.h10 - block.h00;
  const Int slope = slopeOf(dx, dy);

  lit[0].trans = transmission(k, lit[0], block.h00);
  if (k.light2On) lit[1].trans = transmission(k, lit[1], block.h00);

  Int samples[3];
  for (int32_t n = 0; n < 3; ++n) samples[n] = scene.planes < 3 ? pixel[0] : pixel[n];

  Int color[3];
  for (int32_t n = 0; n < 3; ++n) {
    color[n] = ((samples[n] * lit[0].shade * k.lights[0][n]) >> 16) +
               ((samples[n] * lit[1].shade * k.lights[1][n]) >> 16);
  }

  Int behind[3];  // the environment seen through the glass
  Int rw = 0;
  if (k.reflectOn) {
    const Int u = environmentCoordinate(tables, dx);
    const Int v = environmentCoordinate(tables, dy);
    const Int levelX = tables.ripLevels[atMost(magnitude(u - looked.previousU), 64).value];
    looked.previousU = u;
    const Int levelY = tables.ripLevels[atMost(magnitude(v - looked.previousV[c]), 64).value];
    looked.previousV[c] = v;
    Int f = atMost((slope * 140) >> 8, 256);
    f = (((256 - k.glass) << 8) + f * k.glass) >> 8;
    rw = (tables.reflectWeight * f) >> 8;
    for (int32_t n = 0; n < 3; ++n) {
      color[n] += (environmentSample(scene, u, v, levelX, levelY, n) * rw) >> 8;
      behind[n] = environmentSample(scene, 63 - u, 63 - v, levelX, levelY, n);
    }
  }

  for (int32_t n = 0; n < 3; ++n) {
    color[n] += (lit[0].front * k.lights[0][n] + lit[1].front * k.lights[1][n]) >> 8;
  }

  const int64_t slopeClass = atMost(slope >> 3, 89).value;
  for (int32_t n = 0; n < 3; ++n) color[n] = (color[n] * tables.iridescence[slopeClass][n]) >> 8;

  const Int ci = atMost(atLeast(46 - ((k.hRef - (k.slopeRef - slope)) * 46) / k.hRef, 0), 92);
  Int caustics[2][3];
  for (int32_t light = 0; light < 2; ++light) {
    const Int through = (lit[light].trans * k.glass * k.transmitScale) >> 16;
    for (int32_t n = 0; n < 3; ++n) {
      caustics[light][n] = (tables.causticColors[ci.value][n] * lit[light].caustic) >> 8;
      color[n] += (samples[n] * k.lights[light][n] * (through + caustics[light][n])) >> 16;
    }
  }

  if (k.reflectOn) {
    const Int rw2 = (rw * k.glass * tables.reflectRest) >> 16;
    for (int32_t n = 0; n < 3; ++n) color[n] += (behind[n] * samples[n] * rw2) >> 15;
  }

  composePixel(scene, k, c, r, tarnish, samples, lit, caustics, color, target);
}

}  // namespace

std::vector<int32_t> referenceTarnish(const ReferenceField& field, const EffectSettings& settings) {
  constexpr int32_t kWeights[5][5] = {{0, 2, 5, 2, 0},
                                      {2, 10, 14, 10, 2},
                                      {5, 14, -132, 14, 5},
                                      {2, 10, 14, 10, 2},
                                      {0, 2, 5, 2, 0}};
  Int t = settings.tarnish;
  if (t > 50) t = 4 * t - 150;
  const Int strength = (t * 256) / (Int(settings.previewScale) * 50);
  std::vector<int32_t> amounts;
  for (int32_t r = 0; r < field.rows - 2; ++r) {
    int32_t rows[5] = {r - 2, r - 1, r, r + 1, r + 2};
    if (r == 0) rows[0] = rows[1] = r;
    if (r == 1) rows[0] = r - 1;
    for (int32_t c = 0; c < field.columns - 2; ++c) {
      Int sum = 0;
      for (int32_t v = 0; v < 5; ++v) {
        for (int32_t u = 0; u < 5; ++u) {
          const int32_t column = std::max(c - 2 + u, 0);
          sum += Int(kWeights[v][u]) * referenceCell(field, column, rows[v]);
        }
      }
      const Int a = atLeast(-sum, 0);
      amounts.push_back(static_cast<int32_t>(atMost((strength * a) >> 12, 256).value));
    }
  }
  return amounts;
}

std::vector<uint8_t> referenceShade(const ReferenceScene& scene) {
  const Constants k = buildConstants(scene);
  const int32_t width = scene.field.columns - 2;
  const int32_t height = scene.field.rows - 2;
  std::vector<int32_t> tarnish(static_cast<size_t>(width) * height, 0);
  if (scene.settings.tarnish != 0) tarnish = referenceTarnish(scene.field, scene.settings);

  std::vector<uint8_t> effect = scene.source;
  Looked looked = {16, std::vector<Int>(width, Int(16))};
  for (int32_t r = 0; r < height; ++r) {
    looked.previousU = 16;
    for (int32_t c = 0; c < width; ++c) {
      const size_t pixel = static_cast<size_t>(r) * width + c;
      shadePixel(scene, k, c, r, tarnish[pixel], looked, &scene.source[pixel * scene.planes],
                 &effect[pixel * scene.planes]);
    }
  }
  return effect;
}
