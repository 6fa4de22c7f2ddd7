// strip_scan: what the sources of all rows give the cells of a strip of columns. For
// field_passes.cpp, which is compiled once per instruction set; everything is static.

#pragma once

#include "vector/cone_lanes.h"
#include "vector/field_passes.h"
#include "vector/lanes.h"
#include "vector/row_scan.h"

// The code, for distances to the left, of the pixel before column x: as far as codes tell.
static uint16_t codeBefore(const uint8_t* mask, int32_t x, int32_t radius) {
  int32_t at = x - 1;
  const int32_t end = x - 1 - (radius + 2);
  while (at > end && at >= 0 && mask[at] != 0) --at;
  if (at == x - 1) return kUnselectedCode;
  if (at == end) return 65535;
  return static_cast<uint16_t>((x - 1 - at) << 8 | mask[at + 1]);
}

// The same to the right, of the pixel at column x.
static uint16_t codeBehind(const uint8_t* mask, int32_t x, int32_t count, int32_t radius) {
  int32_t at = x;
  const int32_t end = x + radius + 2;
  while (at < end && at < count && mask[at] != 0) ++at;
  if (at == x) return kUnselectedCode;
  if (at == end) return 65535;
  return static_cast<uint16_t>((at - x) << 8 | mask[at - 1]);
}

// A code of its own for each pixel that is unselected or has an unselected neighbour.
static inline Lanes ownCodes(Lanes m, Lanes neighbour) {
  const Lanes none = splat(0);
  const Lanes beside = choose(equal(neighbour, none), either(m, splat(256)), splat(65535));
  return choose(equal(m, none), splat(kUnselectedCode), beside);
}

static inline Lanes least(Lanes codes, Lanes moved, int32_t distance) {
  return smaller(codes, addSaturated(moved, splat(256 * distance)));
}

static inline Lanes joinedToTheLeft(Lanes own, Lanes carried, Lanes places) {
  own = least(own, movedUp<1>(own), 1);
  own = least(own, movedUp<2>(own), 2);
  own = least(own, movedUp<4>(own), 4);
  own = least(own, movedUp<8>(own), 8);
  return smaller(own, addSaturated(carried, places));
}

static inline Lanes joinedToTheRight(Lanes own, Lanes carried, Lanes places) {
  own = least(own, movedDown<1>(own), 1);
  own = least(own, movedDown<2>(own), 2);
  own = least(own, movedDown<4>(own), 4);
  own = least(own, movedDown<8>(own), 8);
  return smaller(own, addSaturated(carried, places));
}

// 256, 512, ...: how much farther the lanes are from the one before the first.
static const uint16_t kPlaces[kLanes] = {1 << 8,  2 << 8,  3 << 8,  4 << 8,  5 << 8,  6 << 8,
                                         7 << 8,  8 << 8,  9 << 8,  10 << 8, 11 << 8, 12 << 8,
                                         13 << 8, 14 << 8, 15 << 8, 16 << 8};
static const uint16_t kPlacesBack[kLanes] = {16 << 8, 15 << 8, 14 << 8, 13 << 8, 12 << 8, 11 << 8,
                                             10 << 8, 9 << 8,  8 << 8,  7 << 8,  6 << 8,  5 << 8,
                                             4 << 8,  3 << 8,  2 << 8,  1 << 8};

static inline uint16_t* stripRow(const FieldStrip& strip, uint16_t* rows, int32_t index) {
  return rows + index * strip.width;
}

static inline int32_t ringIndex(const FieldStrip& strip, int32_t row) {
  return row % strip.ringRows;
}

constexpr int32_t kWidestStrip = 512;

static void takeStripRow(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                         const uint8_t* mask, int32_t count) {
  uint16_t* codes = stripRow(strip, strip.codes, ringIndex(strip, row));
  uint16_t* bounds = stripRow(strip, strip.bounds, ringIndex(strip, row));
  uint16_t* fine = stripRow(strip, strip.fine, row / kFineGroup & (strip.fineSlots - 1));
  uint16_t* coarse = stripRow(strip, strip.coarse, row / kCoarseGroup & (strip.coarseSlots - 1));
  const bool newFine = row % kFineGroup == 0;
  const bool newCoarse = row % kCoarseGroup == 0;
  const int32_t x0 = strip.firstColumn;
  const int32_t columns = (strip.columns + kLanes - 1) / kLanes * kLanes;
  // The pixels with one more on either side; outside the picture nothing is selected.
  uint8_t pixels[kWidestStrip + 2 * kLanes] = {};
  uint8_t* first = pixels + kLanes;
  Lanes carriedLeft = splat(kUnselectedCode);
  Lanes carriedRight = splat(kUnselectedCode);
  if (mask != nullptr) {
    const int32_t end = lesser(columns, count - x0);
    __builtin_memcpy(first, mask + x0, static_cast<uint32_t>(end));
    if (x0 > 0) first[-1] = mask[x0 - 1];
    if (x0 + columns < count) first[columns] = mask[x0 + columns];
    carriedLeft = splat(codeBefore(mask, x0, cone.radius));
    if (x0 + columns < count) {
      carriedRight = splat(codeBehind(mask, x0 + columns, count, cone.radius));
    }
  }
  for (int32_t x = 0; x < columns; x += kLanes) {
    const Lanes own = ownCodes(loadBytes(first + x), loadBytes(first + x - 1));
    const Lanes left = joinedToTheLeft(own, carriedLeft, load(kPlaces));
    carriedLeft = lastLaneEverywhere(left);
    store(codes + x, left);
  }
  const Lanes limitCode = lastCode(cone);
  for (int32_t x = columns - kLanes; x >= 0; x -= kLanes) {
    const Lanes own = ownCodes(loadBytes(first + x), loadBytes(first + x + 1));
    const Lanes right = joinedToTheRight(own, carriedRight, load(kPlacesBack));
    carriedRight = firstLaneEverywhere(right);
    const Lanes nearer = smaller(smaller(right, load(codes + x)), limitCode);
    const Lanes bound = boundsOf(cone, nearer, limitCode);
    store(codes + x, nearer);
    store(bounds + x, bound);
    store(fine + x, newFine ? bound : smaller(bound, load(fine + x)));
    store(coarse + x, newCoarse ? bound : smaller(bound, load(coarse + x)));
  }
}

// Calls look(row, distance) for the rows at which some lane's bound may be less than its limit,
// nearer ones first. `limit` may fall on the way. Groups also hold older rows, or only part of
// theirs; their least bound is then too small, or that of all there are.
template <class Look>
static inline void forNearRows(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                               int32_t x, const Lanes& limit, Look look) {
  const int32_t first = row > cone.radius ? row - cone.radius : 0;
  const int32_t last = lesser(row + cone.radius, strip.lastRow);
  const auto promises = [&](const uint16_t* group, int32_t distance) {
    return anyLess(addSaturated(load(group + x), splat(cone.squares[distance])), limit);
  };
  const auto fineOf = [&](int32_t r) {
    return stripRow(strip, strip.fine, r / kFineGroup & (strip.fineSlots - 1));
  };
  const auto coarseOf = [&](int32_t r) {
    return stripRow(strip, strip.coarse, r / kCoarseGroup & (strip.coarseSlots - 1));
  };
  look(row, 0);
  int32_t up = row - 1;
  int32_t down = row + 1;
  while (up >= first || down <= last) {
    if (up >= first) {
      const int32_t distance = row - up;
      if (!anyLess(splat(cone.squares[distance]), limit)) {
        up = -1;
      } else if ((distance == 1 || up % kCoarseGroup == kCoarseGroup - 1) &&
                 !promises(coarseOf(up), distance)) {
        up = up / kCoarseGroup * kCoarseGroup - 1;
      } else {
        const int32_t start = up / kFineGroup * kFineGroup;
        if (promises(fineOf(up), distance)) {
          for (int32_t r = up; r >= start && r >= first; --r) look(r, row - r);
        }
        up = start - 1;
      }
    }
    if (down <= last) {
      const int32_t distance = down - row;
      if (!anyLess(splat(cone.squares[distance]), limit)) {
        down = last + 1;
      } else if ((distance == 1 || down % kCoarseGroup == 0) &&
                 !promises(coarseOf(down), distance)) {
        down = (down / kCoarseGroup + 1) * kCoarseGroup;
      } else {
        const int32_t end = (down / kFineGroup + 1) * kFineGroup;
        if (promises(fineOf(down), distance)) {
          for (int32_t r = down; r < end && r <= last; ++r) look(r, r - row);
        }
        down = end;
      }
    }
  }
}

static void finishStripRow(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                           const uint8_t* mask, int16_t* cells) {
  const Lanes limitCode = lastCode(cone);
  const Lanes none = splat(0);
  const int16_t* before = cone.centre - 1;
  const int32_t middle = ringIndex(strip, row);
  const auto ringRow = [&](uint16_t* rows, int32_t r) {
    int32_t index = middle + r - row;
    if (index < 0) index += strip.ringRows;
    if (index >= strip.ringRows) index -= strip.ringRows;
    return stripRow(strip, rows, index);
  };
  for (int32_t x = 0; x < strip.columns; x += kLanes) {
    const Lanes m = loadBytes(mask + x);
    const Lanes targets = equal(m, splat(255));
    Lanes best = loadPart(cells + x, strip.columns - x);
    if (anyBit(targets)) {
      Lanes limit = both(targets, limitsOf(cone, best));
      Nearest nearest = {limit, limitCode, none};
      forNearRows(cone, strip, row, x, nearest.sum, [&](int32_t r, int32_t distance) {
        lookForNearest(cone, ringRow(strip.bounds, r) + x, ringRow(strip.codes, r) + x, distance,
                       &nearest);
      });
      if (anyLess(nearest.sum, limit)) {
        best = larger(best, coneValues(before, nearest.offset, nearest.code));
        limit = both(targets, limitsOf(cone, best));
        forNearRows(cone, strip, row, x, limit, [&](int32_t r, int32_t distance) {
          const Lanes sum =
              addSaturated(load(ringRow(strip.bounds, r) + x), splat(cone.squares[distance]));
          if (!anyLess(sum, limit)) return;
          best = larger(best, coneValues(before + distance * cone.stride, none,
                                         load(ringRow(strip.codes, r) + x)));
        });
      }
    }
    const Lanes partly = mixed(m, 3000, cone.coneStep);
    const Lanes border = choose(equal(m, none), splat(3000), partly);
    storePart(cells + x, choose(targets, best, border), strip.columns - x);
  }
}
