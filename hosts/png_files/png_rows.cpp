#include "hosts/png_files/png_rows.h"

#include <algorithm>
#include <cstdlib>

// Of left, above and above left, the one nearest to left + above - above left.
static uint8_t paeth(int left, int above, int aboveLeft) {
  const int toLeft = std::abs(above - aboveLeft);
  const int toAbove = std::abs(left - aboveLeft);
  const int toAboveLeft = std::abs(left + above - 2 * aboveLeft);
  const int nearest = toAbove <= toAboveLeft ? above : aboveLeft;
  return static_cast<uint8_t>(toLeft <= toAbove && toLeft <= toAboveLeft ? left : nearest);
}

// --- Back -----------------------------------------------------------------------------------

// A step known to the compiler keeps the pixel on the left in registers.
template <size_t kStep>
static void undoLeft(size_t bytes, uint8_t* row) {
  uint8_t left[kStep] = {};
  for (size_t i = 0; i + kStep <= bytes; i += kStep) {
    for (size_t k = 0; k < kStep; ++k) row[i + k] = left[k] = uint8_t(left[k] + row[i + k]);
  }
}

static void undoUp(size_t bytes, const uint8_t* above, uint8_t* row) {
  for (size_t i = 0; i < bytes; ++i) row[i] = static_cast<uint8_t>(row[i] + above[i]);
}

template <size_t kStep>
static void undoAverage(size_t bytes, const uint8_t* above, uint8_t* row) {
  uint8_t left[kStep] = {};
  for (size_t i = 0; i + kStep <= bytes; i += kStep) {
    for (size_t k = 0; k < kStep; ++k) {
      row[i + k] = left[k] = uint8_t(row[i + k] + (left[k] + above[i + k]) / 2);
    }
  }
}

template <size_t kStep>
static void undoPaeth(size_t bytes, const uint8_t* above, uint8_t* row) {
  int left[kStep] = {};
  int aboveLeft[kStep] = {};
  for (size_t i = 0; i + kStep <= bytes; i += kStep) {
    for (size_t k = 0; k < kStep; ++k) {
      const int up = above[i + k];
      left[k] = uint8_t(row[i + k] + paeth(left[k], up, aboveLeft[k]));
      row[i + k] = static_cast<uint8_t>(left[k]);
      aboveLeft[k] = up;
    }
  }
}

template <size_t kStep>
static bool unfilter(int filter, size_t bytes, const uint8_t* above, uint8_t* row) {
  switch (filter) {
    case 0:
      return true;
    case 1:
      undoLeft<kStep>(bytes, row);
      return true;
    case 2:
      undoUp(bytes, above, row);
      return true;
    case 3:
      undoAverage<kStep>(bytes, above, row);
      return true;
    case 4:
      undoPaeth<kStep>(bytes, above, row);
      return true;
    default:
      return false;
  }
}

bool unfilterPngRow(int filter, size_t step, size_t bytes, const uint8_t* above, uint8_t* row) {
  switch (step) {
    case 1:
      return unfilter<1>(filter, bytes, above, row);
    case 2:
      return unfilter<2>(filter, bytes, above, row);
    case 3:
      return unfilter<3>(filter, bytes, above, row);
    case 4:
      return unfilter<4>(filter, bytes, above, row);
    case 6:
      return unfilter<6>(filter, bytes, above, row);
    case 8:
      return unfilter<8>(filter, bytes, above, row);
    default:
      return false;
  }
}

// --- There ----------------------------------------------------------------------------------

// How far the bytes are from 0, going round.
static uint32_t sizeOfNumbers(const uint8_t* bytes, size_t count) {
  uint32_t sum = 0;
  for (size_t i = 0; i < count; ++i) {
    const uint8_t back = static_cast<uint8_t>(0 - bytes[i]);
    sum += std::min(bytes[i], back);
  }
  return sum;
}

// The loops run over whole rows, so that the compiler makes vectors of them.
static void filterLeft(const uint8_t* row, size_t step, size_t bytes, uint8_t* to) {
  std::copy_n(row, step, to);
  for (size_t i = step; i < bytes; ++i) to[i] = static_cast<uint8_t>(row[i] - row[i - step]);
}

static void filterUp(const uint8_t* row, const uint8_t* above, size_t bytes, uint8_t* to) {
  for (size_t i = 0; i < bytes; ++i) to[i] = static_cast<uint8_t>(row[i] - above[i]);
}

static void filterAverage(const uint8_t* row, const uint8_t* above, size_t step, size_t bytes,
                          uint8_t* to) {
  for (size_t i = 0; i < step; ++i) to[i] = static_cast<uint8_t>(row[i] - above[i] / 2);
  for (size_t i = step; i < bytes; ++i) {
    to[i] = static_cast<uint8_t>(row[i] - (row[i - step] + above[i]) / 2);
  }
}

static void filterPaeth(const uint8_t* row, const uint8_t* above, size_t step, size_t bytes,
                        uint8_t* to) {
  for (size_t i = 0; i < step; ++i) to[i] = static_cast<uint8_t>(row[i] - above[i]);
  for (size_t i = step; i < bytes; ++i) {
    const int16_t left = row[i - step];
    const int16_t up = above[i];
    const int16_t corner = above[i - step];
    const int16_t byUp = static_cast<int16_t>(up - corner);
    const int16_t byLeft = static_cast<int16_t>(left - corner);
    const int16_t byBoth = static_cast<int16_t>(byUp + byLeft);
    const int16_t toLeft = static_cast<int16_t>(byUp < 0 ? -byUp : byUp);
    const int16_t toUp = static_cast<int16_t>(byLeft < 0 ? -byLeft : byLeft);
    const int16_t toCorner = static_cast<int16_t>(byBoth < 0 ? -byBoth : byBoth);
    const int16_t other = toUp <= toCorner ? up : corner;
    const int16_t best = ((toLeft <= toUp) & (toLeft <= toCorner)) != 0 ? left : other;
    to[i] = static_cast<uint8_t>(row[i] - best);
  }
}

int filterPngRow(size_t step, size_t bytes, const uint8_t* above, const uint8_t* row,
                 PngFilterRows* rows) {
  for (std::vector<uint8_t>& candidate : rows->candidates) candidate.resize(bytes);
  std::copy_n(row, bytes, rows->candidates[0].data());
  filterLeft(row, step, bytes, rows->candidates[1].data());
  filterUp(row, above, bytes, rows->candidates[2].data());
  filterAverage(row, above, step, bytes, rows->candidates[3].data());
  filterPaeth(row, above, step, bytes, rows->candidates[4].data());
  int best = 0;
  uint32_t least = UINT32_MAX;
  for (int filter = 0; filter < kPngFilters; ++filter) {
    const uint32_t size = sizeOfNumbers(rows->candidates[filter].data(), bytes);
    if (size >= least) continue;
    least = size;
    best = filter;
  }
  return best;
}
