// reference_tables: the light directions and every lookup table of the shading.

#pragma once

#include <array>
#include <cstdint>

#include "settings/effect_settings.h"

// Degrees from "right", clockwise, and the elevation, of a direction as the light pads give it.
struct ReferenceLight {
  int32_t angle;
  int32_t elevation;
};

ReferenceLight referenceLight(const Direction& direction);

// Weights of a 2 x 2 block of cells: top left, top right, bottom left, bottom right.
using ReferenceStencil = std::array<int32_t, 4>;
using ReferenceColor = std::array<int32_t, 3>;

enum ReferenceSlot {
  kReferenceMain1 = 0,
  kReferenceSide1 = 1,
  kReferenceMain2 = 2,
  kReferenceSide2 = 3,
  kReferenceCaustic1 = 4,
  kReferenceCaustic2 = 5,
};

struct ReferenceTables {
  std::array<ReferenceLight, 2> lights;
  std::array<ReferenceStencil, 6> stencils;  // by slot
  std::array<int32_t, 2000> reflectionAngle;
  std::array<ReferenceColor, 81> iridescenceSpectrum;  // 380 to 780 nm in steps of 5
  ReferenceColor spectrumSums;                         // twice the spectrum's sums
  std::array<ReferenceColor, 93> causticSpectrum;
  std::array<ReferenceColor, 93> causticColors;  // what the shading reads
  std::array<ReferenceColor, 90> iridescence;    // by slope class, in 1/256
  std::array<int32_t, 7> ripOffsets;
  std::array<int32_t, 65> ripLevels;
  std::array<int32_t, 256> proceduralWeight;  // in 1/255, by source sample
  int32_t reflectWeight;                      // in 1/256
  int32_t reflectRest;
};

ReferenceStencil referenceStencil(int32_t angle);
ReferenceTables referenceTables(const EffectSettings& settings);
