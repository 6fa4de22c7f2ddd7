// selection_mask: the selection as the row passes see it.

#pragma once

#include <cstdint>

#include "entry/session_record.h"

// One row of the selection. Outside the picture nothing is selected; without a mask, or where the
// host delivered none for the row, everything inside is.
struct MaskRow {
  const uint8_t* samples;  // null: `fill` in every column
  int32_t fill;            // 0 for a row outside the picture, else 255
  int32_t lastCol;

  int32_t value(int32_t x) const {
    if (x < 0 || x > lastCol) return 0;
    return samples == nullptr ? fill : samples[x];
  }
};

inline MaskRow maskRow(const SessionRecord* session, int32_t y) {
  const RenderState& render = session->render;
  const FilterRecord* filter = session->filter;
  MaskRow row = {nullptr, 255, render.lastCol};
  if (y < 0 || y > render.lastRow) {
    row.fill = 0;
    return row;
  }
  if (render.preview.maskCopy.inUse != 0) {
    row.samples = render.preview.maskCopy.samples + int64_t{y} * render.renderWidth;
    return row;
  }
  const int32_t delivered = y - render.bandTop;
  const bool inBand = delivered >= 0 && delivered < filter->maskRect.bottom - filter->maskRect.top;
  const int32_t columns = filter->maskRect.right - filter->maskRect.left + render.bandLeft;
  const bool wide = render.bandLeft <= 0 && columns >= render.renderWidth;
  if (filter->haveMask != 0 && filter->maskData != nullptr && inBand && wide) {
    row.samples = filter->maskData + int64_t{delivered} * filter->maskRowBytes - render.bandLeft;
  }
  return row;
}
