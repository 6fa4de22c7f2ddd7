// cone_lanes: what sixteen codes say about the values of a cone. For the files that are compiled
// once per instruction set; everything is static.

#pragma once

#include "vector/field/field_passes.h"
#include "vector/field/lanes.h"

// Which codes need no look
// ------------------------
// A code (t, m) at cross offset w gives the value v = ((255 - m) C(t-1, w) + m C(t, w)) >> 8. Let
// K = 3000 / (R + 1), d(x) = sqrt(x^2 + w^2), e the rounding of d in the cone and R' = R + 1 + e,
// so that C <= K max(0, R' - d). With u = m / 255 and p = t - 1 + u, a value v > best needs
//     (1-u) max(0, R' - d(t-1)) + u max(0, R' - d(t)) >= b,  b = 256 (best + 1) / (255 K).
// 1. d(t) <= R': d is convex, so d(p) <= (1-u) d(t-1) + u d(t) <= R' - b.
// 2. d(t) > R': with D = R' - d(t-1), 0 < D < 1, the condition is 1-u >= b / D, and no distance
//    grows faster than its argument, so d(p) <= d(t-1) + u <= R' + 1 - (D + b / D)
//    <= R' + 1 - 2 sqrt(b). As b <= (1-u) D, this can happen with b < 1 only.
// R' - b <= R' + 1 - 2 sqrt(b) always, so d(p) <= r(b), which is the latter for b < 1 and the
// former else. Since p >= (256 (t-1) + m) / 256, the square of that, rounded down, never exceeds
// p^2, and a code whose square and w^2 add up to more than r(b)^2 needs no look.
//
// How good the best one is at least
// ---------------------------------
// Let the least sum of such squares belong to the code (t, m) at w. Then d(p) <= s = sqrt(sum + 1,
// for the rounding) + 1/256, all in pixels. C >= K (R + 1 - d) - 1, wherever it is cut off, so
// 256 (v + 1) > 255 (K (R + 1 - mean) - 1), mean = (1-u) d(t-1) + u d(t), and b > R + 1 - mean -
// 1 / K. The mean exceeds d(p) by u (1-u) / 2 times the largest d'' at most, and d'' = w^2 / d^3 <=
// 1 / d: by 1 / (8 d(t-1)), where d(t-1) >= d(p) - 1 and, unless w = 0 and nothing is exceeded,
// d(t-1) >= 1. So the least sum alone tells a b, and with it which codes can give more.

// The lower bound of p^2, in the cone's units; unselected pixels have 0. `limit` is the code from
// which on all values are 0; such codes are beyond every limit.
static inline Lanes boundsOf(const FieldCone& cone, Lanes codes, Lanes limit) {
  const Lanes p = subtractSaturated(codes, splat(256));
  const Lanes square = either(shiftedLeft(upperProduct(p, p), cone.scaleBits),
                              shiftedRight(product(p, p), 16 - cone.scaleBits));
  return either(square, equal(codes, limit));
}

static inline Lanes lastCode(const FieldCone& cone) {
  return splat(256 * (cone.radius + 1) + 255);
}

// From a distance s as above to one that d(t-1) is not below: 1, and what rounding sums to whole
// units adds to any s beyond 2.
constexpr float kShorter = 1.25F;

#if defined(__AVX2__)

// floor(r(b)^2) + 1 in the cone's units, and 1 more for the rounding here.
static inline __m256i limitOfEight(const FieldCone& cone, __m256 b) {
  const __m256 one = _mm256_set1_ps(1);
  const __m256 zero = _mm256_setzero_ps();
  const __m256 root = _mm256_sqrt_ps(_mm256_max_ps(_mm256_min_ps(b, one), zero));
  const __m256 beyond = _mm256_max_ps(_mm256_sub_ps(b, one), zero);
  const __m256 reach =
      _mm256_sub_ps(_mm256_sub_ps(_mm256_set1_ps(cone.reach), _mm256_add_ps(root, root)), beyond);
  const __m256 r = _mm256_max_ps(reach, zero);
  const __m256 square = _mm256_mul_ps(_mm256_mul_ps(r, r), _mm256_set1_ps(cone.scale));
  return _mm256_add_epi32(_mm256_cvttps_epi32(square), _mm256_set1_epi32(2));
}
static inline __m256 needOfEight(const FieldCone& cone, __m256i best) {
  const __m256 more = _mm256_add_ps(_mm256_cvtepi32_ps(best), _mm256_set1_ps(1));
  return _mm256_mul_ps(more, _mm256_set1_ps(cone.perValue));
}
static inline __m256 giftOfEight(const FieldCone& cone, __m256i sum) {
  const __m256 one = _mm256_set1_ps(1);
  const __m256 square =
      _mm256_mul_ps(_mm256_add_ps(_mm256_cvtepi32_ps(sum), one), _mm256_set1_ps(cone.perUnit));
  const __m256 distance = _mm256_sqrt_ps(square);
  const __m256 shorter = _mm256_max_ps(_mm256_sub_ps(distance, _mm256_set1_ps(kShorter)), one);
  const __m256 bent = _mm256_div_ps(_mm256_set1_ps(0.125F), shorter);
  return _mm256_sub_ps(_mm256_sub_ps(_mm256_set1_ps(cone.sureReach), distance), bent);
}
// Sums that are not less give no value above `best`.
static inline Lanes limitsOf(const FieldCone& cone, Lanes best) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256 lower = needOfEight(cone, _mm256_unpacklo_epi16(best.v, zero));
  const __m256 upper = needOfEight(cone, _mm256_unpackhi_epi16(best.v, zero));
  return {_mm256_packus_epi32(limitOfEight(cone, lower), limitOfEight(cone, upper))};
}
// Sums that are not less give no value above that of the code with the least sum.
static inline Lanes limitsOfLeast(const FieldCone& cone, Lanes sum) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256 lower = giftOfEight(cone, _mm256_unpacklo_epi16(sum.v, zero));
  const __m256 upper = giftOfEight(cone, _mm256_unpackhi_epi16(sum.v, zero));
  return {_mm256_packus_epi32(limitOfEight(cone, lower), limitOfEight(cone, upper))};
}

static inline Lanes mixedOf(Lanes m, __m256i lowerPairs, __m256i upperPairs) {
  const __m256i rest = _mm256_sub_epi16(_mm256_set1_epi16(255), m.v);
  const __m256i lower = _mm256_madd_epi16(lowerPairs, _mm256_unpacklo_epi16(rest, m.v));
  const __m256i upper = _mm256_madd_epi16(upperPairs, _mm256_unpackhi_epi16(rest, m.v));
  return {_mm256_packs_epi32(_mm256_srli_epi32(lower, 8), _mm256_srli_epi32(upper, 8))};
}

// ((255 - m) first + m second) >> 8.
static inline Lanes mixed(Lanes m, int32_t first, int32_t second) {
  const __m256i pairs = _mm256_set1_epi32(first | second << 16);
  return mixedOf(m, pairs, pairs);
}

// before: the cell before the cone's centre. rows: cells to the row of the cone that is w away.
static inline Lanes coneValues(const int16_t* before, Lanes rows, Lanes codes) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i index = _mm256_add_epi16(_mm256_srli_epi16(codes.v, 8), rows.v);
  const int* cells = reinterpret_cast<const int*>(before);
  const __m256i lower = _mm256_i32gather_epi32(cells, _mm256_unpacklo_epi16(index, zero), 2);
  const __m256i upper = _mm256_i32gather_epi32(cells, _mm256_unpackhi_epi16(index, zero), 2);
  return mixedOf(both(codes, splat(255)), lower, upper);
}

// table[index] for each lane; one entry more is readable. No value is negative.
static inline Lanes lookedUp(const int16_t* table, Lanes index) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i cell = _mm256_set1_epi32(0xFFFF);
  const int* cells = reinterpret_cast<const int*>(table);
  const __m256i lower = _mm256_i32gather_epi32(cells, _mm256_unpacklo_epi16(index.v, zero), 2);
  const __m256i upper = _mm256_i32gather_epi32(cells, _mm256_unpackhi_epi16(index.v, zero), 2);
  return {_mm256_packus_epi32(_mm256_and_si256(lower, cell), _mm256_and_si256(upper, cell))};
}

#else

static inline Lanes coneValues(const int16_t* before, Lanes rows, Lanes codes) {
  uint16_t row[kLanes];
  uint16_t code[kLanes];
  store(row, rows);
  store(code, codes);
  for (int32_t i = 0; i < kLanes; ++i) {
    const int16_t* cell = before + row[i] + (code[i] >> 8);
    const int32_t m = code[i] & 255;
    code[i] = static_cast<uint16_t>(((255 - m) * cell[0] + m * cell[1]) >> 8);
  }
  return load(code);
}

static inline Lanes lookedUp(const int16_t* table, Lanes index) {
  uint16_t values[kLanes];
  store(values, index);
  for (uint16_t& value : values) value = static_cast<uint16_t>(table[value]);
  return load(values);
}

#if defined(__SSE2__)

static inline __m128i limitOfFour(const FieldCone& cone, __m128 b) {
  const __m128 one = _mm_set1_ps(1);
  const __m128 zero = _mm_setzero_ps();
  const __m128 root = _mm_sqrt_ps(_mm_max_ps(_mm_min_ps(b, one), zero));
  const __m128 beyond = _mm_max_ps(_mm_sub_ps(b, one), zero);
  const __m128 reach =
      _mm_sub_ps(_mm_sub_ps(_mm_set1_ps(cone.reach), _mm_add_ps(root, root)), beyond);
  const __m128 r = _mm_max_ps(reach, zero);
  const __m128 square = _mm_mul_ps(_mm_mul_ps(r, r), _mm_set1_ps(cone.scale));
  // Moved into the range of signed numbers, which alone can be packed.
  return _mm_add_epi32(_mm_cvttps_epi32(square), _mm_set1_epi32(2 - 32768));
}
static inline __m128i limitOfNeed(const FieldCone& cone, __m128i best) {
  const __m128 more = _mm_add_ps(_mm_cvtepi32_ps(best), _mm_set1_ps(1));
  return limitOfFour(cone, _mm_mul_ps(more, _mm_set1_ps(cone.perValue)));
}
static inline __m128i limitOfGift(const FieldCone& cone, __m128i sum) {
  const __m128 one = _mm_set1_ps(1);
  const __m128 square =
      _mm_mul_ps(_mm_add_ps(_mm_cvtepi32_ps(sum), one), _mm_set1_ps(cone.perUnit));
  const __m128 distance = _mm_sqrt_ps(square);
  const __m128 shorter = _mm_max_ps(_mm_sub_ps(distance, _mm_set1_ps(kShorter)), one);
  const __m128 bent = _mm_div_ps(_mm_set1_ps(0.125F), shorter);
  const __m128 gift = _mm_sub_ps(_mm_sub_ps(_mm_set1_ps(cone.sureReach), distance), bent);
  return limitOfFour(cone, gift);
}
static inline __m128i unsignedPacked(__m128i lower, __m128i upper) {
  return _mm_xor_si128(_mm_packs_epi32(lower, upper), _mm_set1_epi16(-32768));
}
static inline Lanes limitsOf(const FieldCone& cone, Lanes best) {
  const __m128i zero = _mm_setzero_si128();
  return {unsignedPacked(limitOfNeed(cone, _mm_unpacklo_epi16(best.lo, zero)),
                         limitOfNeed(cone, _mm_unpackhi_epi16(best.lo, zero))),
          unsignedPacked(limitOfNeed(cone, _mm_unpacklo_epi16(best.hi, zero)),
                         limitOfNeed(cone, _mm_unpackhi_epi16(best.hi, zero)))};
}
static inline Lanes limitsOfLeast(const FieldCone& cone, Lanes sum) {
  const __m128i zero = _mm_setzero_si128();
  return {unsignedPacked(limitOfGift(cone, _mm_unpacklo_epi16(sum.lo, zero)),
                         limitOfGift(cone, _mm_unpackhi_epi16(sum.lo, zero))),
          unsignedPacked(limitOfGift(cone, _mm_unpacklo_epi16(sum.hi, zero)),
                         limitOfGift(cone, _mm_unpackhi_epi16(sum.hi, zero)))};
}

static inline __m128i mixedEight(__m128i m, __m128i pairs) {
  const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), m);
  const __m128i lower = _mm_madd_epi16(pairs, _mm_unpacklo_epi16(rest, m));
  const __m128i upper = _mm_madd_epi16(pairs, _mm_unpackhi_epi16(rest, m));
  return _mm_packs_epi32(_mm_srli_epi32(lower, 8), _mm_srli_epi32(upper, 8));
}
static inline Lanes mixed(Lanes m, int32_t first, int32_t second) {
  const __m128i pairs = _mm_set1_epi32(first | second << 16);
  return {mixedEight(m.lo, pairs), mixedEight(m.hi, pairs)};
}

#else

static inline int32_t limitOf(const FieldCone& cone, float b) {
  const float root = __builtin_sqrtf(b < 0 ? 0 : b < 1 ? b : 1);
  const float reach = cone.reach - 2 * root - (b > 1 ? b - 1 : 0);
  const float r = reach > 0 ? reach : 0;
  return static_cast<int32_t>(r * r * cone.scale) + 2;
}
static inline Lanes limitsOf(const FieldCone& cone, Lanes best) {
  return perLane(
      [&](int32_t i) { return limitOf(cone, static_cast<float>(best.v[i] + 1) * cone.perValue); });
}
static inline Lanes limitsOfLeast(const FieldCone& cone, Lanes sum) {
  return perLane([&](int32_t i) {
    const float distance = __builtin_sqrtf(static_cast<float>(sum.v[i] + 1) * cone.perUnit);
    const float shorter = distance - kShorter;
    const float bent = 0.125F / (shorter > 1 ? shorter : 1);
    return limitOf(cone, cone.sureReach - distance - bent);
  });
}

static inline Lanes mixed(Lanes m, int32_t first, int32_t second) {
  return perLane([&](int32_t i) { return ((255 - m.v[i]) * first + m.v[i] * second) >> 8; });
}

#endif
#endif
