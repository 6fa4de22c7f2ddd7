// strip_scan: what the sources of all rows give the cells of a strip of columns. For
// field_passes.cpp, which is compiled once per instruction set; everything is static.

#pragma once

#include "vector/field/cone_lanes.h"
#include "vector/field/field_passes.h"
#include "vector/field/lanes.h"
#include "vector/field/row_scan.h"

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

static_assert(kLanes == kColumnBlock);

enum class Side { kLeft, kRight };

template <Side kSide, int32_t kDistance>
static inline Lanes leastFrom(Lanes codes) {
  if constexpr (kSide == Side::kLeft) return least(codes, movedUp<kDistance>(codes), kDistance);
  return least(codes, movedDown<kDistance>(codes), kDistance);
}

// The least of what the lanes on that side tell of themselves, and of what was carried to here.
template <Side kSide>
static inline Lanes joined(Lanes own, Lanes carried, Lanes places) {
  own = leastFrom<kSide, 1>(own);
  own = leastFrom<kSide, 2>(own);
  own = leastFrom<kSide, 4>(own);
  own = leastFrom<kSide, 8>(own);
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

static void takeStripRow(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                         const uint8_t* mask, int32_t count) {
  uint16_t* codes = stripRow(strip, strip.codes, row % strip.ringRows);
  uint16_t* bounds = stripRow(strip, strip.bounds, row % strip.ringRows);
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
    const Lanes left = joined<Side::kLeft>(own, carriedLeft, load(kPlaces));
    carriedLeft = lastLaneEverywhere(left);
    store(codes + x, left);
  }
  const Lanes limitCode = lastCode(cone);
  const Lanes unselected = splat(kUnselectedCode);
  for (int32_t x = columns - kLanes; x >= 0; x -= kLanes) {
    const Lanes own = ownCodes(loadBytes(first + x), loadBytes(first + x + 1));
    const Lanes right = joined<Side::kRight>(own, carriedRight, load(kPlacesBack));
    carriedRight = firstLaneEverywhere(right);
    const Lanes nearer = smaller(smaller(right, load(codes + x)), limitCode);
    const Lanes bound = either(boundsOf(cone, nearer, limitCode), equal(nearer, unselected));
    store(codes + x, nearer);
    store(bounds + x, bound);
    store(fine + x, newFine ? bound : smaller(bound, load(fine + x)));
    store(coarse + x, newCoarse ? bound : smaller(bound, load(coarse + x)));
  }
}

// Calls look(first) for the groups of rows, by their first one, in which some lane's sum may be
// less than its limit. A group that is taken only in part has the least bound of what there is.
template <class Look>
static inline void forNearRows(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                               int32_t x, Lanes limit, Look look) {
  constexpr int32_t kGroupsInCoarse = kCoarseGroup / kFineGroup;
  const uint16_t* squares = cone.squares + kNoDistance;
  const int32_t widest = largestLane(limit);
  const auto promises = [&](const uint16_t* group, int32_t distance) {
    return anyLess(addSaturated(load(group + x), splat(squares[distance])), limit);
  };
  const auto promisesFine = [&](int32_t group, int32_t distance) {
    return promises(stripRow(strip, strip.fine, group & (strip.fineSlots - 1)), distance);
  };
  const auto promisesCoarse = [&](int32_t group, int32_t distance) {
    const int32_t coarse = group / kGroupsInCoarse & (strip.coarseSlots - 1);
    return promises(stripRow(strip, strip.coarse, coarse), distance);
  };
  const int32_t middle = row / kFineGroup;
  if (promisesFine(middle, 0)) look(middle * kFineGroup);
  const int32_t first = (row - cone.radius) / kFineGroup;
  int32_t distance = row - middle * kFineGroup + 1;
  bool enters = true;
  for (int32_t up = middle - 1; up >= first && squares[distance] < widest;) {
    if ((enters || up % kGroupsInCoarse == kGroupsInCoarse - 1) && !promisesCoarse(up, distance)) {
      up = up / kGroupsInCoarse * kGroupsInCoarse - 1;
    } else {
      if (promisesFine(up, distance)) look(up * kFineGroup);
      --up;
    }
    enters = false;
    distance = row - up * kFineGroup - (kFineGroup - 1);
    if (distance > cone.radius) break;
  }
  const int32_t last = (row + cone.radius) / kFineGroup;
  distance = (middle + 1) * kFineGroup - row;
  enters = true;
  for (int32_t down = middle + 1; down <= last && squares[distance] < widest;) {
    if ((enters || down % kGroupsInCoarse == 0) && !promisesCoarse(down, distance)) {
      down = (down / kGroupsInCoarse + 1) * kGroupsInCoarse;
    } else {
      if (promisesFine(down, distance)) look(down * kFineGroup);
      ++down;
    }
    enters = false;
    distance = down * kFineGroup - row;
    if (distance > cone.radius) break;
  }
}

static void finishStripRow(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                           const uint8_t* mask, int16_t* cells) {
  const Lanes none = splat(0);
  const int32_t middle = row / kFineGroup * kFineGroup;
  const int32_t middleInRing = middle % strip.ringRows;
  // Rows of a group lie side by side in the ring.
  const auto inRing = [&](uint16_t* rows, int32_t first) {
    int32_t index = middleInRing + first - middle;
    if (index < 0) index += strip.ringRows;
    if (index >= strip.ringRows) index -= strip.ringRows;
    return stripRow(strip, rows, index);
  };
  const auto groupOf = [&](int32_t first, int32_t x) {
    const int32_t place = kNoDistance + first - row;
    return Group{inRing(strip.bounds, first) + x, strip.width, cone.squares + place,
                 cone.rows + place};
  };
  uint16_t limits[kWidestStrip];
  const uint16_t* ownBounds = inRing(strip.bounds, middle) + (row - middle) * strip.width;
  for (int32_t x = 0; x < strip.columns; x += kLanes) {
    const Lanes targets = equal(loadBytes(mask + x), splat(255));
    Lanes limit = none;
    if (anyBit(targets)) {
      limit = limitsOf(cone, loadPart(cells + x, strip.columns - x));
      const Lanes own = load(ownBounds + x);
      if (anyLess(own, limit)) limit = smaller(limit, limitsOfLeast(cone, own));
    }
    store(limits + x, both(targets, limit));
  }
  for (int32_t x = 0; x < strip.columns; x += kLanes) {
    const Lanes m = loadBytes(mask + x);
    const Lanes limit = load(limits + x);
    Best best = noneYet(cone, loadPart(cells + x, strip.columns - x));
    if (anyBit(limit)) {
      forNearRows(cone, strip, row, x, limit, [&](int32_t first) {
        offerBelow(cone, groupOf(first, x), inRing(strip.codes, first) + x, limit, &best);
      });
      lookUp(cone, &best);
    }
    const Lanes partly = mixed(m, kFieldTop, cone.coneStep);
    const Lanes border = choose(equal(m, none), splat(kFieldTop), partly);
    storePart(cells + x, choose(equal(m, splat(255)), best.value, border), strip.columns - x);
  }
}
