// reference_render: the whole render, slow and literal: one loop per rule, nothing remembered,
// nothing shared. It judges the product's render, which has to give the same bytes.
//
// Its pieces can be called alone: referenceProfile, referenceTexture, referenceRipMap,
// referenceResample, referenceTables and the passes of the field.

#pragma once

#include <cstdint>
#include <vector>

#include "settings/effect_settings.h"
#include "tests/reference/reference_field.h"
#include "tests/reference/reference_pictures.h"
#include "tests/reference/reference_profile_relief.h"
#include "tests/reference/reference_shading.h"
#include "tests/reference/reference_tables.h"
#include "tests/reference/reference_textures.h"

struct ReferenceInput {
  // What the user sets, each within its range, and previewScale (at least 1), previewMode and
  // previewOriginX and Y.
  // Without a texture file textureWidth and textureHeight count too, for textureChoice 13.
  EffectSettings settings;
  int32_t width;
  int32_t height;
  int32_t planes;                    // 1 to 4
  std::vector<uint8_t> source;       // interleaved
  std::vector<uint8_t> mask;         // empty: no mask
  std::vector<uint8_t> environment;  // 64 x 64 x 3, not yet turned
  std::vector<uint8_t> texture;      // grey picture for textureChoice 13; empty: no file
  int32_t textureWidth;              // of that picture, 1 to 256
  int32_t textureHeight;
  uint32_t seed;  // of the generated textures
};

struct ReferenceOutput {
  std::vector<uint8_t> effect;  // interleaved like the source
  ReferenceField afterStamping;
  ReferenceField afterBorder;
  ReferenceField afterForward;
  ReferenceField afterBackward;
  ReferenceField afterRelief;
  int32_t effectiveRadius;
  int32_t coneStep;
  int32_t textureScaleFactor;
  int32_t textureWidth;  // where the relief wraps
  int32_t textureHeight;
  ReferenceProfile profile;
  ReferenceTables tables;
  std::vector<uint8_t> textureSurface;      // 256 x 256 grey
  std::vector<uint8_t> environmentSurface;  // 128 x 128 x 3
  // Results of the shading that a 32-bit number could not hold; 0 for settings that a 32-bit
  // version has to get right.
  int64_t intermediatesBeyond32Bits;
};

ReferenceOutput referenceRender(const ReferenceInput& input);
