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

// Calls look(offset) for the offsets at which some lane's bound may be less than its limit, nearer
// ones first. `limit` may fall on the way.
template <class Look>
static inline void forNearColumns(const FieldCone& cone, const FieldRow& row, int32_t x,
                                  const uint16_t* squares, const Lanes& limit, Look look) {
  const auto promises = [&](const uint16_t* group, Lanes square) {
    return anyLess(addSaturated(load(group), square), limit);
  };
  look(0);
  for (int32_t far = 1; far <= cone.radius; far += kCoarseGroup) {
    const Lanes farSquare = splat(squares[far]);
    if (!anyLess(farSquare, limit)) return;
    const bool right = promises(row.coarse + x + far, farSquare);
    const bool left = promises(row.coarse + x - far - (kCoarseGroup - 1), farSquare);
    if (!right && !left) continue;
    const int32_t farEnd = lesser(far + kCoarseGroup - 1, cone.radius);
    for (int32_t near = far; near <= farEnd; near += kFineGroup) {
      const Lanes square = splat(squares[near]);
      if (!anyLess(square, limit)) return;
      const int32_t nearEnd = lesser(near + kFineGroup - 1, farEnd);
      if (right && promises(row.fine + x + near, square)) {
        for (int32_t w = near; w <= nearEnd; ++w) look(w);
      }
      if (left && promises(row.fine + x - near - (kFineGroup - 1), square)) {
        for (int32_t w = near; w <= nearEnd; ++w) look(-w);
      }
    }
  }
}

// What has the least sum of bounds so far.
struct Nearest {
  Lanes sum;
  Lanes code;
  Lanes offset;  // cells of the cone
};

static inline void lookForNearest(const FieldCone& cone, const uint16_t* bounds,
                                  const uint16_t* codes, int32_t distance, Nearest* nearest) {
  const Lanes sum = addSaturated(load(bounds), splat(cone.squares[distance]));
  const Lanes least = smaller(sum, nearest->sum);
  const Lanes kept = equal(least, nearest->sum);
  nearest->sum = least;
  nearest->code = choose(kept, nearest->code, load(codes));
  nearest->offset = choose(kept, nearest->offset, splat(distance * cone.stride));
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
  const int16_t* before = cone.centre - 1;
  const Lanes widest = limitsOf(cone, splat(0));
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes targets = equal(loadBytes(mask + x), splat(255));
    const Lanes start = both(targets, widest);
    Nearest nearest = {start, limitCode, splat(0)};
    if (anyBit(targets)) {
      forNearColumns(cone, row, x, cone.squares, nearest.sum, [&](int32_t w) {
        lookForNearest(cone, row.bounds + x + w, row.codes + x + w, w < 0 ? -w : w, &nearest);
      });
    }
    Lanes best = splat(0);
    if (anyLess(nearest.sum, start)) {
      best = coneValues(before, nearest.offset, nearest.code);
      const Lanes limit = both(targets, limitsOf(cone, best));
      forNearColumns(cone, row, x, cone.squares, limit, [&](int32_t w) {
        const int32_t distance = w < 0 ? -w : w;
        const Lanes sum = addSaturated(load(row.bounds + x + w), splat(cone.squares[distance]));
        if (!anyLess(sum, limit)) return;
        best = larger(
            best, coneValues(before + distance * cone.stride, splat(0), load(row.codes + x + w)));
      });
    }
    storePart(cells + x, best, count - x);
  }
}

static void scanHardRow(const FieldCone& cone, const FieldRow& row, const int16_t* values,
                        const uint8_t* mask, int32_t count, int16_t* cells) {
  const Lanes outside = splat((cone.radius + 1) * (cone.radius + 1));
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes distance = shiftedRight(joinedCodes(row, mask, cells, x, count), 8);
    store(row.bounds + x, product(distance, distance));
  }
  findGroups(row, cone.radius, count);
  for (int32_t x = 0; x < count; x += kLanes) {
    Lanes least = outside;
    forNearColumns(cone, row, x, cone.pixelSquares, least, [&](int32_t w) {
      const Lanes square = splat(cone.pixelSquares[w < 0 ? -w : w]);
      least = smaller(least, addSaturated(load(row.bounds + x + w), square));
    });
    storePart(cells + x, lookedUp(values, least), count - x);
  }
}
