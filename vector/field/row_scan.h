// row_scan: what the sources of all columns give the cells of a row. For field_passes.cpp, which is
// compiled once per instruction set; everything is static.

#pragma once

#include "vector/field/cone_lanes.h"
#include "vector/field/field_passes.h"
#include "vector/field/lanes.h"

static inline int32_t lesser(int32_t a, int32_t b) {
  return a < b ? a : b;
}

static void beginRows(const FieldRow& row, int32_t count) {
  for (int32_t i = 0; i < count + kRowMargin; i += kLanes) store(row.up + i, splat(255));
  uint16_t* const lists[] = {row.codes, row.bounds, row.sources, row.fine, row.coarse};
  for (uint16_t* list : lists) {
    for (int32_t i = -kRowMargin; i < count + kRowMargin; i += kLanes)
      store(list + i, splat(65535));
  }
  // The pixels beside the row are unselected.
  row.codes[-1] = kUnselectedCode;
  row.bounds[-1] = 0;
  store(row.codes + count, splat(kUnselectedCode));
  store(row.bounds + count, splat(0));
}

// The codes of selected and other pixels m, one step away from those with the codes `before`.
static inline Lanes nextCodes(Lanes m, Lanes before) {
  const Lanes unselected = splat(kUnselectedCode);
  const Lanes step = splat(256);
  const Lanes selected =
      choose(equal(before, unselected), either(m, step), addSaturated(before, step));
  return choose(equal(m, splat(0)), unselected, selected);
}

// The codes of both sides joined, for a block of columns.
static inline Lanes joinedCodes(const FieldRow& row, const uint8_t* mask, const int16_t* down,
                                int32_t x, int32_t count) {
  const Lanes m = loadBytes(mask + x);
  const Lanes up = nextCodes(m, load(row.up + x));
  store(row.up + x, up);
  // Behind the row's end all is unselected, whatever is loaded.
  const Lanes joined = smaller(up, loadPart(down + x, count - x));
  return choose(equal(m, splat(0)), splat(kUnselectedCode), joined);
}

// to[i] = least of from[i] and the `step` entries after it, for two lists of such minima; may be
// done in place.
static inline void joinGroups(const uint16_t* from, int32_t step, int32_t first, int32_t last,
                              uint16_t* to) {
  for (int32_t i = first; i < last; i += kLanes) {
    store(to + i, smaller(load(from + i), load(from + i + step)));
  }
}

// Lesser radii have so few groups that coarse ones save nothing.
constexpr int32_t kCoarseFrom = 24;

static void findGroups(const FieldRow& row, int32_t radius, int32_t count) {
  const int32_t first = -(radius + kFineGroup);
  const int32_t last = count + radius + kLanes;
  joinGroups(row.bounds, 1, first, last, row.fine);
  joinGroups(row.fine, 2, first, last, row.fine);
  joinGroups(row.fine, 4, first, last, row.fine);
  if (radius < kCoarseFrom) return;
  const int32_t start = -kCoarseGroup * ((radius + kCoarseGroup - 1) / kCoarseGroup);
  joinGroups(row.fine, 8, start, last, row.coarse);
  joinGroups(row.coarse, 16, start, last, row.coarse);
  joinGroups(row.coarse, 32, start, last, row.coarse);
}

// Eight lists of bounds or codes side by side, for offsets that follow each other.
struct Group {
  const uint16_t* bounds;
  int32_t stride;
  const uint16_t* squares;   // of the offsets
  const uint16_t* coneRows;  // and the rows of the cone, as cells
};

static inline Lanes sumAt(const Group& group, int32_t i) {
  return addSaturated(load(group.bounds + i * group.stride), splat(group.squares[i]));
}

static inline Lanes leastSum(const Group& group, Lanes least) {
  for (int32_t i = 0; i < kFineGroup; ++i) least = smaller(least, sumAt(group, i));
  return least;
}

// The same for offsets to one side, whose nearer half may be enough.
static inline Lanes leastSumOfSide(const Group& group, bool right, Lanes least) {
  constexpr int32_t kHalf = kFineGroup / 2;
  const int32_t nearer = right ? 0 : kHalf;
  for (int32_t i = 0; i < kHalf; ++i) least = smaller(least, sumAt(group, nearer + i));
  if (!anyLess(splat(group.squares[right ? kHalf : kHalf - 1]), least)) return least;
  for (int32_t i = 0; i < kHalf; ++i) least = smaller(least, sumAt(group, kHalf - nearer + i));
  return least;
}

// A bit for each offset at which some lane's sum is less than its limit.
static inline uint32_t offsetsBelow(const Group& group, Lanes limit) {
  uint32_t bits = 0;
  for (int32_t i = 0; i < kFineGroup; ++i) {
    bits |= static_cast<uint32_t>(anyLess(sumAt(group, i), limit)) << i;
  }
  return bits;
}

// The best value of each lane, and a code that waits to be looked at: values are looked up for all
// lanes at once, so each lane waits until one of them has a second code.
struct Best {
  Lanes value;
  Lanes code;
  Lanes row;  // cells of the cone
  Lanes waiting;
};

static inline Best noneYet(const FieldCone& cone, Lanes value) {
  return {value, lastCode(cone), splat(0), splat(0)};
}

static inline void lookUp(const FieldCone& cone, Best* best) {
  best->value = larger(best->value, coneValues(cone.centre - 1, best->row, best->code));
}

// codes: like the bounds of the group.
static inline void offerBelow(const FieldCone& cone, const Group& group, const uint16_t* codes,
                              Lanes limit, Best* best) {
  for (uint32_t bits = offsetsBelow(group, limit); bits != 0; bits &= bits - 1) {
    const int32_t i = firstBit(bits);
    const Lanes below = lessThan(sumAt(group, i), limit);
    if (anyBit(both(below, best->waiting))) {
      lookUp(cone, best);
      best->waiting = splat(0);
    }
    best->waiting = either(best->waiting, below);
    best->code = choose(below, load(codes + i * group.stride), best->code);
    best->row = choose(below, splat(group.coneRows[i]), best->row);
  }
}

// Calls look(first) for the groups of offsets, by their first one, in which some lane's sum may be
// less than its limit, nearer ones first. `limit` may fall on the way.
template <class Look>
static inline void forNearColumns(const FieldCone& cone, const FieldRow& row, int32_t x,
                                  const uint16_t* squares, const Lanes& limit, Look look) {
  int32_t widest = largestLane(limit);
  const auto promises = [&](const uint16_t* group, int32_t distance) {
    return anyLess(addSaturated(load(group + x), splat(squares[distance])), limit);
  };
  const bool skips = cone.radius >= kCoarseFrom;
  for (int32_t far = 0; far <= cone.radius && squares[far] < widest; far += kCoarseGroup) {
    const bool right = !skips || promises(row.coarse + far, far);
    const bool left = !skips || promises(row.coarse - far - kCoarseGroup, far + 1);
    if (!right && !left) continue;
    const int32_t end = lesser(far + kCoarseGroup - 1, cone.radius);
    for (int32_t near = far; near <= end && squares[near] < widest; near += kFineGroup) {
      const bool looksRight = right && promises(row.fine + near, near);
      if (looksRight) look(near);
      const bool looksLeft = left && promises(row.fine - near - kFineGroup, near + 1);
      if (looksLeft) look(-near - kFineGroup);
      if (looksRight || looksLeft) widest = largestLane(limit);
    }
  }
}

// Columns that a stage of a scan works on before the next one begins: its branches need not wait
// for what another one computes.
constexpr int32_t kStage = 512;

static void scanSoftColumns(const FieldCone& cone, const FieldRow& row, const uint8_t* mask,
                            int32_t start, int32_t count, int16_t* cells) {
  const uint16_t* squares = cone.squares + kNoDistance;
  const auto groupOf = [&](const uint16_t* bounds, int32_t offset) {
    return Group{bounds + offset, 1, squares + offset, cone.rows + kNoDistance + offset};
  };
  const Lanes widest = limitsOf(cone, splat(0));
  const int32_t end = lesser(start + kStage, count);
  uint16_t limits[kStage];
  for (int32_t x = start; x < end; x += kLanes) {
    const Lanes widestHere = both(equal(loadBytes(mask + x), splat(255)), widest);
    Lanes least = smaller(widestHere, load(row.bounds + x));
    if (anyLess(splat(squares[1]), least)) {
      forNearColumns(cone, row, x, squares, least, [&](int32_t offset) {
        least = leastSumOfSide(groupOf(row.bounds + x, offset), offset >= 0, least);
      });
    }
    store(limits + (x - start), either(least, equal(least, widestHere)));
  }
  for (int32_t x = start; x < end; x += kLanes) {
    const Lanes least = load(limits + (x - start));
    const Lanes found = lessThan(least, splat(65535));
    if (anyBit(found)) {
      store(limits + (x - start), both(found, smaller(widest, limitsOfLeast(cone, least))));
    } else {
      store(limits + (x - start), splat(0));
    }
  }
  for (int32_t x = start; x < end; x += kLanes) {
    const Lanes limit = load(limits + (x - start));
    Best best = noneYet(cone, splat(0));
    if (anyBit(limit)) {
      forNearColumns(cone, row, x, squares, limit, [&](int32_t offset) {
        offerBelow(cone, groupOf(row.sources + x, offset), row.codes + x + offset, limit, &best);
      });
      lookUp(cone, &best);
    }
    storePart(cells + x, best.value, count - x);
  }
}

static void scanSoftRow(const FieldCone& cone, const FieldRow& row, const uint8_t* mask,
                        int32_t count, int16_t* cells) {
  const Lanes limitCode = lastCode(cone);
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes codes = smaller(joinedCodes(row, mask, cells, x, count), limitCode);
    const Lanes bounds = boundsOf(cone, codes, limitCode);
    store(row.codes + x, codes);
    store(row.bounds + x, bounds);
    // Unselected pixels tell how much there is at least, but the other axis has to give it.
    store(row.sources + x, either(bounds, equal(codes, splat(kUnselectedCode))));
  }
  findGroups(row, cone.radius, count);
  for (int32_t x = 0; x < count; x += kStage) scanSoftColumns(cone, row, mask, x, count, cells);
}

static void scanHardRow(const FieldCone& cone, const FieldRow& row, const int16_t* values,
                        const uint8_t* mask, int32_t count, int16_t* cells) {
  const Lanes outside = splat((cone.radius + 1) * (cone.radius + 1));
  const uint16_t* squares = cone.pixelSquares + kNoDistance;
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes distance = shiftedRight(joinedCodes(row, mask, cells, x, count), 8);
    store(row.bounds + x, product(distance, distance));
  }
  findGroups(row, cone.radius, count);
  for (int32_t x = 0; x < count; x += kLanes) {
    Lanes least = smaller(outside, load(row.bounds + x));
    if (anyLess(splat(1), least)) {
      forNearColumns(cone, row, x, squares, least, [&](int32_t offset) {
        const Group group = {row.bounds + x + offset, 1, squares + offset, nullptr};
        least = leastSumOfSide(group, offset >= 0, least);
      });
    }
    // Most blocks are all outside or all beyond the cone.
    Lanes cell = splat(values[0]);
    if (anyLess(splat(0), least)) {
      cell = anyLess(least, outside) ? lookedUp(values, least) : splat(0);
    }
    storePart(cells + x, cell, count - x);
  }
}
