#include "vector/composition_passes.h"

#include "vector/table_passes.h"

namespace MORVALIS_SET {

static void loadGrey(const ShadingRow&, ShadingChunk* chunk) {
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) chunk->source[0][i] = chunk->pixels[i];
}

static void loadRgb(const ShadingRow&, ShadingChunk* chunk) {
  const uint8_t* __restrict pixels = chunk->pixels;
  Lane* __restrict red = chunk->source[0];
  Lane* __restrict green = chunk->source[1];
  Lane* __restrict blue = chunk->source[2];
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    red[i] = pixels[3 * i];
    green[i] = pixels[3 * i + 1];
    blue[i] = pixels[3 * i + 2];
  }
}

// Excess beyond this turns every channel, and grey, to 255 with or without the remainder.
constexpr Lane kLargestExcess = 2145;
constexpr int32_t kExcessShare = 150;

struct Spread {
  Lane colour[3];
};

static inline Spread spreadOne(Lane red, Lane green, Lane blue) {
  const auto overRed = least(most(static_cast<Lane>(red - 255), 0), kLargestExcess);
  const auto overGreen = least(most(static_cast<Lane>(green - 255), 0), kLargestExcess);
  const auto overBlue = least(most(static_cast<Lane>(blue - 255), 0), kLargestExcess);
  const Lane excess =
      shareOf(static_cast<Lane>(3 * overRed + 6 * overGreen + overBlue), kExcessShare);
  const auto marked =
      static_cast<Lane>((overRed > 0 ? 1 : 0) + (overGreen > 0 ? 1 : 0) + (overBlue > 0 ? 1 : 0));
  const auto share = static_cast<Lane>(marked == 1 ? excess >> 1 : excess);
  return {{static_cast<Lane>(overRed > 0 ? red : red + share),
           static_cast<Lane>(overGreen > 0 ? green : green + share),
           static_cast<Lane>(overBlue > 0 ? blue : blue + share)}};
}

static void spread(const ShadingRow&, ShadingChunk* chunk) {
  Lane* __restrict red = chunk->colour[0];
  Lane* __restrict green = chunk->colour[1];
  Lane* __restrict blue = chunk->colour[2];
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    const Spread to = spreadOne(red[i], green[i], blue[i]);
    red[i] = least(to.colour[0], 255);
    green[i] = least(to.colour[1], 255);
    blue[i] = least(to.colour[2], 255);
  }
}

constexpr int32_t kRedShare = 77;
constexpr int32_t kGreenShare = 151;
constexpr int32_t kBlueShare = 28;

static void spreadToGrey(const ShadingRow&, ShadingChunk* chunk) {
  Lane* __restrict red = chunk->colour[0];
  const Lane* __restrict green = chunk->colour[1];
  const Lane* __restrict blue = chunk->colour[2];
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    const Spread to = spreadOne(red[i], green[i], blue[i]);
    // Each product fits 16 bits; a channel that is cut off here makes the level 255 alone.
    const auto r = static_cast<uint16_t>(kRedShare * least(to.colour[0], 65535 / kRedShare));
    const auto g = static_cast<uint16_t>(kGreenShare * least(to.colour[1], 65535 / kGreenShare));
    const auto b = static_cast<uint16_t>(kBlueShare * least(to.colour[2], 65535 / kBlueShare));
    const auto parts = static_cast<Lane>((r & 255) + (g & 255) + (b & 255));
    const auto level = static_cast<Lane>((r >> 8) + (g >> 8) + (b >> 8) + (parts >> 8));
    red[i] = least(level, 255);
  }
}

// o: the finished value, s: the source sample; both 0 to 255, and so are the results.
static inline Lane blendProceduralPlus(Lane o, Lane s) {
  const Lane w = least(static_cast<Lane>(2 * s), static_cast<Lane>(511 - 2 * s));
  return static_cast<Lane>(static_cast<uint16_t>(w * o + (255 - w) * s) >> 8);
}
static inline Lane blendProceduralMinus(Lane o, Lane s) {
  return least(static_cast<Lane>(o + (static_cast<uint16_t>(s * o) >> 8)), 255);
}
static inline Lane blendDifference(Lane o, Lane s) {
  return static_cast<Lane>(static_cast<uint16_t>(s * (255 - o) + o * (255 - s)) >> 8);
}
static inline Lane blendAdd(Lane o, Lane s) {
  return least(static_cast<Lane>(o + s), 255);
}
static inline Lane blendSubtract(Lane o, Lane s) {
  return most(static_cast<Lane>(o - s), 0);
}
static inline Lane blendMultiply(Lane o, Lane s) {
  return static_cast<Lane>(static_cast<uint16_t>(o * s) >> 8);
}
static inline Lane blendScreen(Lane o, Lane s) {
  return static_cast<Lane>(o + (static_cast<uint16_t>(s * (255 - o)) >> 8));
}

#define BLEND_STAGE(name, procedure)                             \
  static void name(const ShadingRow& row, ShadingChunk* chunk) { \
    const int32_t lanes = lanesOf(chunk);                        \
    for (int32_t k = 0; k < row.channels; ++k) {                 \
      const Lane* __restrict source = chunk->source[k];          \
      Lane* __restrict colour = chunk->colour[k];                \
      FOR_LANES (i, lanes) {                                     \
        colour[i] = procedure(colour[i], source[i]);             \
      }                                                          \
    }                                                            \
  }

BLEND_STAGE(proceduralPlus, blendProceduralPlus)
BLEND_STAGE(proceduralMinus, blendProceduralMinus)
BLEND_STAGE(difference, blendDifference)
BLEND_STAGE(lighten, most)
BLEND_STAGE(darken, least)
BLEND_STAGE(add, blendAdd)
BLEND_STAGE(subtract, blendSubtract)
BLEND_STAGE(multiply, blendMultiply)
BLEND_STAGE(screen, blendScreen)

static void checkerboard(const ShadingRow& row, ShadingChunk* chunk) {
  const uint8_t* __restrict mask = chunk->mask;
  const int32_t first = chunk->firstColumn;
  const int32_t line = row.row;
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < row.channels; ++k) {
    Lane* __restrict colour = chunk->colour[k];
    FOR_LANES (i, lanes) {
      const auto square = static_cast<Lane>(((first + i) ^ line) & 8);
      const auto checker = static_cast<Lane>(square == 0 ? 255 : 204);
      const Lane m = mask[i];
      colour[i] =
          static_cast<Lane>(static_cast<uint16_t>(colour[i] * m + checker * (255 - m)) >> 8);
    }
  }
}

static void storeGrey(const ShadingRow&, ShadingChunk* chunk) {
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    chunk->pixels[i] = static_cast<uint8_t>(chunk->colour[0][i]);
  }
}

static void storeRgb(const ShadingRow&, ShadingChunk* chunk) {
  const Lane* __restrict red = chunk->colour[0];
  const Lane* __restrict green = chunk->colour[1];
  const Lane* __restrict blue = chunk->colour[2];
  uint8_t* __restrict pixels = chunk->pixels;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    pixels[3 * i] = static_cast<uint8_t>(red[i]);
    pixels[3 * i + 1] = static_cast<uint8_t>(green[i]);
    pixels[3 * i + 2] = static_cast<uint8_t>(blue[i]);
  }
}

const CompositionPasses* compositionPasses() {
  static constexpr CompositionPasses kPasses = {
      loadGrey,
      loadRgb,
      spread,
      spreadToGrey,
      {nullptr, proceduralPlus, proceduralMinus, difference, lighten, darken, add, subtract,
       multiply, screen, nullptr, nullptr},
      checkerboard,
      storeGrey,
      storeRgb};
  return &kPasses;
}

}  // namespace MORVALIS_SET
