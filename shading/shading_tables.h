// shading_tables: the lookup tables of the shading pass. Weights and colours are 1/256 unless said
// otherwise; one table is built per session, some at every render set-up, the rest at the start of
// the shading phase.

#pragma once

#include <cstdint>

#include "vector/shading_chunk.h"

constexpr int32_t kStencilSlots = 6;
constexpr int32_t kAngleEntries = 2000;
constexpr int32_t kSpectrumEntries = 81;  // 380 to 780 nm in steps of 5
constexpr int32_t kCausticEntries = 93;   // the spectrum, smoothed over 12 and shifted
constexpr int32_t kIridescenceEntries = 90;
constexpr int32_t kRipMapLevels = 7;
constexpr int32_t kRipMapSteps = 65;

// Roles of the light stencils.
constexpr int32_t kLight1Main = 0;
constexpr int32_t kLight1Side = 1;
constexpr int32_t kLight2Main = 2;
constexpr int32_t kLight2Side = 3;
constexpr int32_t kLight1Caustic = 4;
constexpr int32_t kLight2Caustic = 5;

// Weights for a 2 x 2 block of height-field cells: wRC weighs row R, column C.
struct LightStencil {
  int32_t w00;
  int32_t w01;
  int32_t w10;
  int32_t w11;
};

struct Rgb32 {
  int32_t red;
  int32_t green;
  int32_t blue;
};

// The same in the form that the quick passes read.
struct FastShadingTables {
  uint8_t ready;   // the entries are there, and all in the range that the passes need
  uint8_t filmOn;  // the film changes colours
  int32_t height;  // setting that causticWords was made for
  uint8_t coordinates[kCoordinateEntries];   // by difference of cells, from -kGrazingStep
  uint32_t filmWords[kSteepnessEntries];     // red, green, blue, 9 bits each
  uint32_t causticWords[kSteepnessEntries];  // red, green, blue, 8 bits each
};

struct ShadingTables {
  uint8_t tablesBuilt;  // the three session tables below are there

  int32_t reflectionAngle[kAngleEntries];  // 0 to 780, by height difference
  Rgb32 iridescenceSpectrum[kSpectrumEntries];
  Rgb32 iridescenceSums;
  Rgb32 causticSpectrum[kCausticEntries];

  LightStencil stencils[kStencilSlots];
  Rgb32 iridescence[kIridescenceEntries];  // multipliers by slope class

  Rgb32 caustic[kCausticEntries];       // the caustic spectrum or a grey ramp
  int32_t ripMapOffset[kRipMapLevels];  // pixels along each axis
  int32_t ripMapLevel[kRipMapSteps];    // level for a coordinate change of so many units
  int32_t reflectWeight;                // 0 to 256
  int32_t reflectRest;                  // 256 - reflectWeight
  int16_t proceduralWeight[256];        // 0 to 255, by source value

  FastShadingTables fast;
};
