// shading_chunk: what the shading passes share: the constants of a row, and a chunk of its columns,
// one short array per quantity.
//
// Everything is 16-bit, which is enough on gentle rows, where neighbouring cells differ by at most
// kGentleStep; docs/architecture.md derives the bounds of what is computed from them.

#pragma once

#include <cstdint>

#include "vector/lane_arithmetic.h"
#include "vector/row_division.h"

// Loops run over a multiple of this many columns; the surplus lanes repeat the last column.
constexpr int32_t kLaneMultiple = 32;
constexpr int32_t kChunkColumns = 256;

constexpr int32_t kGentleStep = 1500;

// Steepness from which every table by steepness is level.
constexpr int32_t kSteepnessEntries = 720;
// Difference of cells from which the environment is seen at its edge.
constexpr int32_t kGrazingStep = 145;
constexpr int32_t kCoordinateEntries = 2 * kGrazingStep + 1;

// A light stencil as weight x (x dx + y dy + z dz), where the differences are those of the right,
// the lower and the diagonal neighbour.
struct StencilLanes {
  Lane x;
  Lane y;
  Lane z;
  uint16_t weight;
};

struct LightLanes {
  StencilLanes main;
  StencilLanes side;
  StencilLanes turned;
  StencilLanes caustic;
  Lane elevation;
  Lane colour[3];  // 0 to 255
};

// What holds for all columns of a row. Weights are in 1/256.
struct ShadingRow {
  int32_t channels;  // 1 for grey
  int32_t lightCount;
  LightLanes lights[2];
  Lane tarnishColour[3];

  Lane glareWidth;
  Lane glossScale;
  RowDivision gloss;

  int32_t reflectWeight;
  int32_t reflectRest;
  int32_t glass;
  Lane edgeHeight;
  Lane lowestDepth;  // cells beyond these count as these
  Lane highestDepth;
  RowDivision depth;
  int32_t transmit;  // in 1/65536
  int32_t causticGain;
  int32_t causticSharpness;
  int32_t causticFloor;

  const uint8_t* environment;    // the environment table
  const uint8_t* coordinates;    // by difference of cells, from -kGrazingStep
  const uint32_t* filmWords;     // by steepness: 9 bits a channel
  const uint32_t* causticWords;  // by steepness: 8 bits a channel
  int32_t row;                   // for the squares under a preview
};

// One light's contributions.
struct LightChunk {
  Lane toward[kChunkColumns];  // slope
  Lane shade[kChunkColumns];
  Lane front[kChunkColumns];
  Lane back[kChunkColumns];
  Lane clear[kChunkColumns];
  Lane gathered[kChunkColumns];
};

struct ShadingChunk {
  Lane upper[kChunkColumns + kLaneMultiple];  // cells; one more than lanes
  Lane lower[kChunkColumns + kLaneMultiple];
  uint8_t pixels[3 * kChunkColumns];  // interleaved: first the source, in the end the result
  uint8_t mask[kChunkColumns];
  Lane source[3][kChunkColumns];  // grey: the first alone
  LightChunk lights[2];
  Lane steepness[kChunkColumns];
  Lane tarnish[kChunkColumns];
  Lane colour[3][kChunkColumns];  // grey: in the end the first alone

  // The reflection. beforeU and beforeV: what the column to the left and the row above saw.
  Lane u[kChunkColumns + 1];  // u[0]: of the column before the chunk
  Lane v[kChunkColumns];
  Lane beforeV[kChunkColumns];
  Lane index[kChunkColumns];
  Lane behindIndex[kChunkColumns];
  Lane reflected[kChunkColumns];
  uint32_t seen[kChunkColumns];  // environment pixels
  uint32_t behind[kChunkColumns];
  uint32_t words[kChunkColumns];

  int32_t lanes;  // a multiple of kLaneMultiple
  int32_t firstColumn;
};

// Written so that the compiler sees the multiple.
static inline int32_t lanesOf(const ShadingChunk* chunk) {
  return chunk->lanes & -kLaneMultiple;
}

// A loop whose turns do not depend on each other, which the compiler cannot see where a stage
// changes an array that lies between others.
#if defined(__clang__)
#define FOR_LANES(i, lanes) \
  _Pragma("clang loop vectorize(assume_safety)") for (int32_t i = 0; i < (lanes); ++i)
#else
#define FOR_LANES(i, lanes) _Pragma("GCC ivdep") for (int32_t i = 0; i < (lanes); ++i)
#endif

using ShadingStage = void (*)(const ShadingRow& row, ShadingChunk* chunk);
