// reference_field: the height field's first form, built from the selection alone: cones stamped at
// the edge, everything outside filled, two smoothing sweeps.
//
// 3000 stands on and outside the selection's edge, 0 from R + 1 pixels inside it.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "settings/effect_settings.h"

struct ReferenceMask {
  int32_t width;
  int32_t height;
  std::vector<uint8_t> values;  // row after row; empty: everything is selected
};

// Outside the picture nothing is selected.
int32_t referenceMaskValue(const ReferenceMask& mask, int32_t x, int32_t y);

// One cell per pixel and a border of one cell: cell (i, j) belongs to pixel (i - 1, j - 1).
struct ReferenceField {
  int32_t columns;
  int32_t rows;
  std::vector<int16_t> cells;
};

inline int16_t& referenceCell(ReferenceField& field, int32_t i, int32_t j) {
  return field.cells[static_cast<size_t>(j) * field.columns + i];
}
inline int16_t referenceCell(const ReferenceField& field, int32_t i, int32_t j) {
  return field.cells[static_cast<size_t>(j) * field.columns + i];
}

// R, 1 to 150 pixels.
int32_t referenceEffectiveRadius(const EffectSettings& settings);

// The cone's value at distance 1.
int32_t referenceConeStep(int32_t effectiveRadius);

ReferenceField referenceEmptyField(int32_t width, int32_t height);
void referenceStamp(ReferenceField& field, const ReferenceMask& mask, int32_t effectiveRadius);
void referenceFillBorder(ReferenceField& field, const ReferenceMask& mask, int32_t coneStep);
void referenceSmoothForward(ReferenceField& field);
void referenceSmoothBackward(ReferenceField& field);
