// cone_lanes: what sixteen codes say about the values of a cone. For the files that are compiled
// once per instruction set; everything is static.

#pragma once

#include "vector/field_passes.h"
#include "vector/lanes.h"

// The bound on values
// -------------------
// A code (t, m) at cross offset w gives the value v = ((255 - m) C(t-1, w) + m C(t, w)) >> 8. Let
// K = 3000 / (R + 1), d(x) = sqrt(x^2 + w^2), e the rounding of d in the cone and R' = R + 1 + e,
// so that C <= K max(0, R' - d). With u = m / 255 and p = t - 1 + u, a value v > best needs
//     (1-u) max(0, R' - d(t-1)) + u max(0, R' - d(t)) >= b,  b = 256 (best + 1) / (255 K).
// 1. d(t) <= R': d is convex, so d(p) <= (1-u) d(t-1) + u d(t) <= R' - b.
// 2. d(t) > R': with D = R' - d(t-1), 0 < D < 1, the condition is 1-u >= b / D, and no distance
//    grows faster than its argument, so d(p) <= d(t-1) + u <= R' + 1 - (D + b / D)
//    <= R' + 1 - 2 sqrt(b). As b <= (1-u) D, this can happen with b < 1 only.
// R' - b <= R' + 1 - 2 sqrt(b) always, so d(p) <= r(best), which is the latter for b < 1 and the
// former else. Since p >= (256 (t-1) + m) / 256, the square of that, rounded down, never exceeds
// p^2, and a code whose square and w^2 add up to more than r(best)^2 needs no look.

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

#if defined(__AVX2__)

// Each value, plus what reaches below zero when truncated, as a limit: sums of bounds that are not
// less than it cannot give more than `best`.
static inline __m256i limitOfEight(const FieldCone& cone, __m256i best) {
  const __m256 one = _mm256_set1_ps(1);
  const __m256 b =
      _mm256_mul_ps(_mm256_add_ps(_mm256_cvtepi32_ps(best), one), _mm256_set1_ps(cone.perValue));
  const __m256 root = _mm256_sqrt_ps(_mm256_min_ps(b, one));
  const __m256 beyond = _mm256_max_ps(_mm256_sub_ps(b, one), _mm256_setzero_ps());
  const __m256 reach =
      _mm256_sub_ps(_mm256_sub_ps(_mm256_set1_ps(cone.reach), _mm256_add_ps(root, root)), beyond);
  const __m256 r = _mm256_max_ps(reach, _mm256_setzero_ps());
  const __m256 square = _mm256_mul_ps(_mm256_mul_ps(r, r), _mm256_set1_ps(cone.scale));
  return _mm256_add_epi32(_mm256_cvttps_epi32(square), _mm256_set1_epi32(2));
}
static inline Lanes limitsOf(const FieldCone& cone, Lanes best) {
  const __m256i zero = _mm256_setzero_si256();
  return {_mm256_packus_epi32(limitOfEight(cone, _mm256_unpacklo_epi16(best.v, zero)),
                              limitOfEight(cone, _mm256_unpackhi_epi16(best.v, zero)))};
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

// `before`: the cell before the one at distance 0 of the row of the cone. offsets: added to t.
static inline Lanes coneValues(const int16_t* before, Lanes offsets, Lanes codes) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i index = _mm256_add_epi16(_mm256_srli_epi16(codes.v, 8), offsets.v);
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

static inline Lanes coneValues(const int16_t* before, Lanes offsets, Lanes codes) {
  uint16_t offset[kLanes];
  uint16_t code[kLanes];
  store(offset, offsets);
  store(code, codes);
  for (int32_t i = 0; i < kLanes; ++i) {
    const int16_t* cell = before + offset[i] + (code[i] >> 8);
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

static inline __m128i limitOfFour(const FieldCone& cone, __m128i best) {
  const __m128 one = _mm_set1_ps(1);
  const __m128 b = _mm_mul_ps(_mm_add_ps(_mm_cvtepi32_ps(best), one), _mm_set1_ps(cone.perValue));
  const __m128 root = _mm_sqrt_ps(_mm_min_ps(b, one));
  const __m128 beyond = _mm_max_ps(_mm_sub_ps(b, one), _mm_setzero_ps());
  const __m128 reach =
      _mm_sub_ps(_mm_sub_ps(_mm_set1_ps(cone.reach), _mm_add_ps(root, root)), beyond);
  const __m128 r = _mm_max_ps(reach, _mm_setzero_ps());
  const __m128 square = _mm_mul_ps(_mm_mul_ps(r, r), _mm_set1_ps(cone.scale));
  // Moved into the range of signed numbers, which alone can be packed.
  return _mm_add_epi32(_mm_cvttps_epi32(square), _mm_set1_epi32(2 - 32768));
}
static inline Lanes limitsOf(const FieldCone& cone, Lanes best) {
  const __m128i zero = _mm_setzero_si128();
  const auto limits = [&](__m128i eight) {
    const __m128i packed = _mm_packs_epi32(limitOfFour(cone, _mm_unpacklo_epi16(eight, zero)),
                                           limitOfFour(cone, _mm_unpackhi_epi16(eight, zero)));
    return _mm_xor_si128(packed, _mm_set1_epi16(-32768));
  };
  return {limits(best.lo), limits(best.hi)};
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

static inline Lanes limitsOf(const FieldCone& cone, Lanes best) {
  return perLane([&](int32_t i) {
    const float b = static_cast<float>(best.v[i] + 1) * cone.perValue;
    const float reach = b < 1 ? cone.reach - 2 * __builtin_sqrtf(b) : cone.reach - 1 - b;
    const float r = reach > 0 ? reach : 0;
    return static_cast<int32_t>(r * r * cone.scale) + 2;
  });
}

static inline Lanes mixed(Lanes m, int32_t first, int32_t second) {
  return perLane([&](int32_t i) { return ((255 - m.v[i]) * first + m.v[i] * second) >> 8; });
}

#endif
#endif
