// row_scan: what the sources of all columns give the cells of a row. For field_passes.cpp, which is
// compiled once per instruction set; everything is static.

#pragma once

#include "vector/cone_lanes.h"
#include "vector/field_passes.h"
#include "vector/lanes.h"

static inline int32_t lesser(int32_t a, int32_t b) {
  return a < b ? a : b;
}

static void beginRows(const FieldRow& row, int32_t count) {
  for (int32_t i = 0; i < count + kRowMargin; i += kLanes) store(row.up + i, splat(255));
  uint16_t* const lists[] = {row.codes, row.bounds, row.fine, row.coarse};
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

// The codes of both sides joined, for a block of columns.
static inline Lanes joinedCodes(const FieldRow& row, const uint8_t* mask, const int16_t* down,
                                int32_t x, int32_t count) {
  const Lanes m = loadBytes(mask + x);
  const Lanes below = load(row.up + x);
  const Lanes unselected = splat(kUnselectedCode);
  const Lanes outside = equal(m, splat(0));
  const Lanes beside = either(m, splat(256));
  Lanes up = choose(equal(below, unselected), beside, addSaturated(below, splat(256)));
  up = choose(outside, unselected, up);
  store(row.up + x, up);
  return choose(outside, unselected, smaller(up, loadPart(down + x, count - x)));
}

// to[i] = least of from[i] and the `step` entries after it, for two lists of such minima; may be
// done in place.
static inline void joinGroups(const uint16_t* from, int32_t step, int32_t first, int32_t last,
                              uint16_t* to) {
  for (int32_t i = first; i < last; i += kLanes) {
    store(to + i, smaller(load(from + i), load(from + i + step)));
  }
}

static void findGroups(const FieldRow& row, int32_t radius, int32_t count) {
  const int32_t first = -(radius + kFineGroup);
  const int32_t last = count + radius + kLanes;
  joinGroups(row.bounds, 1, first, last, row.fine);
  joinGroups(row.fine, 2, first, last, row.fine);
  joinGroups(row.fine, 4, first, last, row.fine);
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
  const auto promises = [&](const uint16_t* group, int32_t distance) {
    return anyLess(addSaturated(load(group + x), splat(squares[distance])), limit);
  };
  for (int32_t far = 0; far <= cone.radius; far += kCoarseGroup) {
    if (!anyLess(splat(squares[far]), limit)) return;
    const bool right = promises(row.coarse + far, far);
    const bool left = promises(row.coarse - far - kCoarseGroup, far + 1);
    if (!right && !left) continue;
    const int32_t end = lesser(far + kCoarseGroup - 1, cone.radius);
    for (int32_t near = far; near <= end; near += kFineGroup) {
      if (!anyLess(splat(squares[near]), limit)) return;
      if (right && promises(row.fine + near, near)) look(near);
      if (left && promises(row.fine - near - kFineGroup, near + 1)) look(-near - kFineGroup);
    }
  }
}

static void scanSoftRow(const FieldCone& cone, const FieldRow& row, const uint8_t* mask,
                        int32_t count, int16_t* cells) {
  const Lanes limitCode = lastCode(cone);
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes codes = smaller(joinedCodes(row, mask, cells, x, count), limitCode);
    store(row.codes + x, codes);
    store(row.bounds + x, boundsOf(cone, codes, limitCode));
  }
  findGroups(row, cone.radius, count);
  const uint16_t* squares = cone.squares + kNoDistance;
  const auto groupOf = [&](int32_t x, int32_t w) {
    return Group{row.bounds + x + w, 1, squares + w, cone.rows + kNoDistance + w};
  };
  const Lanes widest = limitsOf(cone, splat(0));
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes targets = equal(loadBytes(mask + x), splat(255));
    Best best = noneYet(cone, splat(0));
    const Lanes start = both(targets, widest);
    Lanes least = start;
    if (anyBit(targets)) {
      forNearColumns(cone, row, x, squares, least,
                     [&](int32_t w) { least = leastSum(groupOf(x, w), least); });
    }
    if (anyLess(least, start)) {
      const Lanes limit = smaller(start, limitsOfLeast(cone, least));
      forNearColumns(cone, row, x, squares, limit, [&](int32_t w) {
        offerBelow(cone, groupOf(x, w), row.codes + x + w, limit, &best);
      });
      lookUp(cone, &best);
    }
    storePart(cells + x, best.value, count - x);
  }
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
    Lanes least = outside;
    forNearColumns(cone, row, x, squares, least, [&](int32_t w) {
      least = leastSum({row.bounds + x + w, 1, squares + w, nullptr}, least);
    });
    storePart(cells + x, lookedUp(values, least), count - x);
  }
}
