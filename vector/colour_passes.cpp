#include "vector/colour_passes.h"

#include "vector/set_procedures.h"
#include "vector/table_passes.h"

namespace MORVALIS_SET {

constexpr int32_t kTarnishRest = 150;

// The channel of a source: grey has one for all.
static inline const Lane* sourceOf(const ShadingRow& row, const ShadingChunk* chunk,
                                   int32_t channel) {
  return chunk->source[row.channels == 1 ? 0 : channel];
}

// source x light x amount / 65536.
static inline Lane litBy(Lane source, Lane light, Lane amount) {
  const auto both = static_cast<uint16_t>(source * light);
  return static_cast<Lane>(upperHalf(both, static_cast<uint16_t>(amount)));
}

// (a x s + b x t) / 256, where one byte is a and b, and s and t at most 32767.
static inline Lane sumOfShares(Lane a, Lane s, Lane b, Lane t) {
  const uint16_t wholeA = upperHalf(static_cast<uint16_t>(a << 8), static_cast<uint16_t>(s));
  const uint16_t wholeB = upperHalf(static_cast<uint16_t>(b << 8), static_cast<uint16_t>(t));
  const auto restA = static_cast<Lane>((a * s) & 255);
  const auto restB = static_cast<Lane>((b * t) & 255);
  return static_cast<Lane>(wholeA + wholeB + ((restA + restB) >> 8));
}

static void oneLight(const ShadingRow& row, ShadingChunk* chunk) {
  const Lane* __restrict shade = chunk->lights[0].shade;
  const Lane* __restrict front = chunk->lights[0].front;
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < 3; ++k) {
    const Lane* __restrict source = sourceOf(row, chunk, k);
    Lane* __restrict colour = chunk->colour[k];
    const Lane light = row.lights[0].colour[k];
    FOR_LANES (i, lanes) {
      colour[i] = static_cast<Lane>(
          litBy(source[i], light, shade[i]) +
          upperHalf(static_cast<uint16_t>(light << 8), static_cast<uint16_t>(front[i])));
    }
  }
}

static void twoLights(const ShadingRow& row, ShadingChunk* chunk) {
  const LightChunk& first = chunk->lights[0];
  const LightChunk& second = chunk->lights[1];
  const Lane* __restrict shade1 = first.shade;
  const Lane* __restrict shade2 = second.shade;
  const Lane* __restrict front1 = first.front;
  const Lane* __restrict front2 = second.front;
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < 3; ++k) {
    const Lane* __restrict source = sourceOf(row, chunk, k);
    Lane* __restrict colour = chunk->colour[k];
    const Lane light1 = row.lights[0].colour[k];
    const Lane light2 = row.lights[1].colour[k];
    FOR_LANES (i, lanes) {
      colour[i] = static_cast<Lane>(litBy(source[i], light1, shade1[i]) +
                                    litBy(source[i], light2, shade2[i]) +
                                    sumOfShares(light1, front1[i], light2, front2[i]));
    }
  }
}

static inline Lane grazed(Lane difference) {
  return static_cast<Lane>(least(most(difference, -kGrazingStep), kGrazingStep) + kGrazingStep);
}

// What each column sees of the environment, 0 to 63.
static void findCoordinates(const ShadingRow& row, ShadingChunk* chunk) {
  const Lane* __restrict upper = chunk->upper;
  const Lane* __restrict lower = chunk->lower;
  Lane* __restrict right = chunk->index;
  Lane* __restrict below = chunk->behindIndex;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    right[i] = grazed(static_cast<Lane>(upper[i + 1] - upper[i]));
    below[i] = grazed(static_cast<Lane>(lower[i] - upper[i]));
  }
  const uint8_t* __restrict coordinates = row.coordinates;
  Lane* __restrict u = chunk->u + 1;
  Lane* __restrict v = chunk->v;
  FOR_LANES (i, lanes) {
    u[i] = coordinates[right[i]];
    v[i] = coordinates[below[i]];
  }
}

// `amount` where a change is larger than this, else 0. As a shift: compared, the compiler takes
// several of them for branches.
static inline Lane whereBeyond(Lane change, Lane limit, Lane amount) {
  return static_cast<Lane>(static_cast<Lane>(limit - change) >> 15 & amount);
}

// 256 >> level of the rip-map, for a coordinate that has changed by so much.
static inline Lane levelScale(Lane now, Lane before) {
  const Lane change = magnitude(static_cast<Lane>(now - before));
  return static_cast<Lane>(256 - whereBeyond(change, 1, 128) - whereBeyond(change, 2, 64) -
                           whereBeyond(change, 5, 32) - whereBeyond(change, 11, 16) -
                           whereBeyond(change, 22, 8) - whereBeyond(change, 45, 4));
}

// Where the coordinate lies in the rip-map's level.
static inline Lane ripMapPlace(Lane coordinate, Lane scale) {
  const uint16_t within =
      upperHalf(static_cast<uint16_t>(coordinate << 8), static_cast<uint16_t>(scale));
  return static_cast<Lane>(within + 128 - (scale >> 1));
}

static void findPlaces(ShadingChunk* chunk) {
  const Lane* __restrict u = chunk->u + 1;
  const Lane* __restrict beforeU = chunk->u;
  const Lane* __restrict v = chunk->v;
  const Lane* __restrict beforeV = chunk->beforeV;
  Lane* __restrict index = chunk->index;
  Lane* __restrict behindIndex = chunk->behindIndex;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    const Lane scaleU = levelScale(u[i], beforeU[i]);
    const Lane scaleV = levelScale(v[i], beforeV[i]);
    index[i] = static_cast<Lane>(128 * ripMapPlace(v[i], scaleV) + ripMapPlace(u[i], scaleU));
    behindIndex[i] = static_cast<Lane>(128 * ripMapPlace(static_cast<Lane>(63 - v[i]), scaleV) +
                                       ripMapPlace(static_cast<Lane>(63 - u[i]), scaleU));
  }
}

static void lookUpPixels(const uint8_t* table, const Lane* __restrict index, int32_t lanes,
                         uint32_t* __restrict pixels) {
  FOR_LANES (i, lanes) {
    pixels[i] = static_cast<uint32_t>(loadWord(table + 4 * index[i]));
  }
}

static void reflection(const ShadingRow& row, ShadingChunk* chunk) {
  findCoordinates(row, chunk);
  findPlaces(chunk);
  lookUpPixels(row.environment, chunk->index, lanesOf(chunk), chunk->seen);
  const Lane* __restrict steepness = chunk->steepness;
  const uint32_t* __restrict seen = chunk->seen;
  Lane* __restrict reflected = chunk->reflected;
  const int32_t glass = row.glass;
  const int32_t weight = row.reflectWeight;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    // Glass mirrors more where it is steep, metal everywhere.
    const Lane steep = least(shareOf(steepness[i], 140), 256);
    const auto strength = static_cast<Lane>(256 - glass + shareOf(steep, glass));
    reflected[i] = shareOf(strength, weight);
  }
  for (int32_t k = 0; k < 3; ++k) {
    Lane* __restrict colour = chunk->colour[k];
    const int32_t shift = 8 + 8 * k;
    FOR_LANES (i, lanes) {
      const auto sample = static_cast<Lane>(seen[i] >> shift & 255);
      colour[i] =
          static_cast<Lane>(colour[i] + (static_cast<uint16_t>(sample * reflected[i]) >> 8));
    }
  }
}

static void lookUpBySteepness(const uint32_t* table, ShadingChunk* chunk) {
  const Lane* __restrict steepness = chunk->steepness;
  uint32_t* __restrict words = chunk->words;
  const int32_t lanes = lanesOf(chunk);
  FOR_LANES (i, lanes) {
    words[i] = table[least(steepness[i], kSteepnessEntries - 1)];
  }
}

static void film(const ShadingRow& row, ShadingChunk* chunk) {
  lookUpBySteepness(row.filmWords, chunk);
  const uint32_t* __restrict words = chunk->words;
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < 3; ++k) {
    Lane* __restrict colour = chunk->colour[k];
    const int32_t shift = 9 * k;
    FOR_LANES (i, lanes) {
      const auto tint = static_cast<uint16_t>(words[i] >> shift & 511);
      colour[i] = shareOf(colour[i], tint);
    }
  }
}

static void glass(const ShadingRow& row, ShadingChunk* chunk) {
  lookUpBySteepness(row.causticWords, chunk);
  const uint32_t* __restrict words = chunk->words;
  const int32_t lanes = lanesOf(chunk);
  for (int32_t light = 0; light < row.lightCount; ++light) {
    const Lane* __restrict gathered = chunk->lights[light].gathered;
    const Lane* __restrict clear = chunk->lights[light].clear;
    for (int32_t k = 0; k < 3; ++k) {
      const Lane* __restrict source = sourceOf(row, chunk, k);
      Lane* __restrict colour = chunk->colour[k];
      const Lane lightColour = row.lights[light].colour[k];
      const int32_t shift = 8 * k;
      FOR_LANES (i, lanes) {
        const auto tint = static_cast<uint16_t>((words[i] >> shift & 255) << 8);
        const uint16_t caustic = upperHalf(tint, static_cast<uint16_t>(gathered[i]));
        const auto arriving = static_cast<Lane>(clear[i] + caustic);
        colour[i] = static_cast<Lane>(colour[i] + litBy(source[i], lightColour, arriving));
      }
    }
  }
}

static void behind(const ShadingRow& row, ShadingChunk* chunk) {
  lookUpPixels(row.environment, chunk->behindIndex, lanesOf(chunk), chunk->behind);
  const uint32_t* __restrict pixels = chunk->behind;
  const Lane* __restrict reflected = chunk->reflected;
  const auto share = static_cast<uint16_t>(row.glass * row.reflectRest);
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < 3; ++k) {
    const Lane* __restrict source = sourceOf(row, chunk, k);
    Lane* __restrict colour = chunk->colour[k];
    const int32_t shift = 8 + 8 * k;
    FOR_LANES (i, lanes) {
      const auto sample = static_cast<Lane>(pixels[i] >> shift & 255);
      const uint16_t amount = upperHalf(static_cast<uint16_t>(reflected[i]), share);
      colour[i] =
          static_cast<Lane>(colour[i] + litBy(source[i], sample, static_cast<Lane>(amount << 1)));
    }
  }
}

static void tarnish(const ShadingRow& row, ShadingChunk* chunk) {
  const Lane* __restrict amount = chunk->tarnish;
  const Lane* __restrict toward1 = chunk->lights[0].toward;
  const Lane* __restrict toward2 = chunk->lights[1].toward;
  const bool both = row.lightCount == 2;
  const int32_t lanes = lanesOf(chunk);
  Lane* __restrict diffuse1 = chunk->index;
  Lane* __restrict diffuse2 = chunk->behindIndex;
  FOR_LANES (i, lanes) {
    diffuse1[i] = compressedLane(most(static_cast<Lane>(toward1[i] + 256), 0), kTarnishRest);
  }
  FOR_LANES (i, lanes) {
    diffuse2[i] = static_cast<Lane>(
        both ? compressedLane(most(static_cast<Lane>(toward2[i] + 256), 0), kTarnishRest) : 0);
  }
  for (int32_t k = 0; k < 3; ++k) {
    Lane* __restrict colour = chunk->colour[k];
    const Lane surface = row.tarnishColour[k];
    const Lane light1 = row.lights[0].colour[k];
    const Lane light2 = row.lights[1].colour[k];
    FOR_LANES (i, lanes) {
      const auto lit = static_cast<Lane>(litBy(surface, light1, diffuse1[i]) +
                                         litBy(surface, light2, diffuse2[i]));
      // The change, kept positive by half the range, of which the share is taken off again.
      const auto change = static_cast<Lane>(lit - colour[i] + 16384);
      colour[i] = static_cast<Lane>(colour[i] + shareOf(change, amount[i]) - 64 * amount[i]);
    }
  }
}

static void causticAlone(const ShadingRow& row, ShadingChunk* chunk) {
  lookUpBySteepness(row.causticWords, chunk);
  const uint32_t* __restrict words = chunk->words;
  const Lane* __restrict gathered1 = chunk->lights[0].gathered;
  const Lane* __restrict gathered2 = chunk->lights[1].gathered;
  const bool both = row.lightCount == 2;
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < 3; ++k) {
    const Lane* __restrict source = sourceOf(row, chunk, k);
    Lane* __restrict colour = chunk->colour[k];
    const Lane light1 = row.lights[0].colour[k];
    const Lane light2 = row.lights[1].colour[k];
    const int32_t shift = 8 * k;
    FOR_LANES (i, lanes) {
      const int32_t tint = words[i] >> shift & 255;
      const int32_t caustic1 = tint * gathered1[i] >> 8;
      const int32_t caustic2 = both ? tint * gathered2[i] >> 8 : 0;
      const int32_t lit = source[i] * (light1 * caustic1 + light2 * caustic2);
      colour[i] = static_cast<Lane>(lit >> 16);
    }
  }
}

static void tarnishAlone(const ShadingRow&, ShadingChunk* chunk) {
  const int32_t lanes = lanesOf(chunk);
  for (int32_t k = 0; k < 3; ++k) {
    FOR_LANES (i, lanes) chunk->colour[k][i] = chunk->tarnish[i];
  }
}

const ColourPasses* colourPasses() {
  static constexpr ColourPasses kPasses = {oneLight, twoLights, reflection,   film,        glass,
                                           behind,   tarnish,   causticAlone, tarnishAlone};
  return &kPasses;
}

}  // namespace MORVALIS_SET
