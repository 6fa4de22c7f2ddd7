// png_rows: the five row filters of PNG files, there and back. A row is its bytes without the
// filter's number; `step` is the bytes of a pixel, and the row before the first is all 0.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

constexpr int kPngFilters = 5;  // none, left, up, average, Paeth

// Makes the bytes of a filtered row those of the picture; false when there is no such filter.
bool unfilterPngRow(int filter, size_t step, size_t bytes, const uint8_t* above, uint8_t* row);

// What filtering needs between rows.
struct PngFilterRows {
  std::vector<uint8_t> candidates[kPngFilters];
};

// The row under the filter that leaves the smallest numbers, in rows->candidates; which one.
int filterPngRow(size_t step, size_t bytes, const uint8_t* above, const uint8_t* row,
                 PngFilterRows* rows);
