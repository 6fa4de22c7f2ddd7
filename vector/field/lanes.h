// lanes: sixteen unsigned 16-bit numbers at a time, in the registers of the instruction set that
// the including file is compiled for; a plain loop where there are none. For the files that are
// compiled once per set, and for them alone: everything is static.

#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

constexpr int32_t kLanes = 16;

#if defined(__AVX2__)

struct Lanes {
  __m256i v;
};

static inline Lanes load(const void* from) {
  return {_mm256_loadu_si256(static_cast<const __m256i*>(from))};
}
static inline Lanes loadBytes(const uint8_t* from) {
  return {_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)))};
}
static inline void store(void* to, Lanes a) {
  _mm256_storeu_si256(static_cast<__m256i*>(to), a.v);
}
static inline Lanes splat(int32_t value) {
  return {_mm256_set1_epi16(static_cast<int16_t>(value))};
}
static inline Lanes addSaturated(Lanes a, Lanes b) {
  return {_mm256_adds_epu16(a.v, b.v)};
}
static inline Lanes subtractSaturated(Lanes a, Lanes b) {
  return {_mm256_subs_epu16(a.v, b.v)};
}
static inline Lanes smaller(Lanes a, Lanes b) {
  return {_mm256_min_epu16(a.v, b.v)};
}
static inline Lanes larger(Lanes a, Lanes b) {
  return {_mm256_max_epu16(a.v, b.v)};
}
// All bits where equal, none elsewhere.
static inline Lanes equal(Lanes a, Lanes b) {
  return {_mm256_cmpeq_epi16(a.v, b.v)};
}
static inline Lanes lessThan(Lanes a, Lanes b) {
  const __m256i least = _mm256_min_epu16(a.v, b.v);
  return {_mm256_xor_si256(_mm256_cmpeq_epi16(least, b.v), _mm256_set1_epi16(-1))};
}
static inline Lanes both(Lanes a, Lanes b) {
  return {_mm256_and_si256(a.v, b.v)};
}
static inline Lanes either(Lanes a, Lanes b) {
  return {_mm256_or_si256(a.v, b.v)};
}
static inline Lanes choose(Lanes mask, Lanes yes, Lanes no) {
  return {_mm256_blendv_epi8(no.v, yes.v, mask.v)};
}
static inline bool anyBit(Lanes a) {
  return _mm256_testz_si256(a.v, a.v) == 0;
}
static inline Lanes product(Lanes a, Lanes b) {
  return {_mm256_mullo_epi16(a.v, b.v)};
}
static inline Lanes upperProduct(Lanes a, Lanes b) {
  return {_mm256_mulhi_epu16(a.v, b.v)};
}
static inline Lanes shiftedLeft(Lanes a, int32_t bits) {
  return {_mm256_sll_epi16(a.v, _mm_cvtsi32_si128(bits))};
}
static inline Lanes shiftedRight(Lanes a, int32_t bits) {
  return {_mm256_srl_epi16(a.v, _mm_cvtsi32_si128(bits))};
}
// Lane i from lane i - count; ones come in.
template <int32_t count>
static inline Lanes movedUp(Lanes a) {
  const __m256i before = _mm256_permute2x128_si256(a.v, _mm256_set1_epi16(-1), 0x02);
  return {_mm256_alignr_epi8(a.v, before, 16 - 2 * count)};
}
// Lane i from lane i + count; ones come in.
template <int32_t count>
static inline Lanes movedDown(Lanes a) {
  const __m256i after = _mm256_permute2x128_si256(a.v, _mm256_set1_epi16(-1), 0x21);
  if constexpr (count == 8) {
    return {after};
  } else {
    return {_mm256_alignr_epi8(after, a.v, 2 * count)};
  }
}
static inline Lanes firstLaneEverywhere(Lanes a) {
  return {_mm256_broadcastw_epi16(_mm256_castsi256_si128(a.v))};
}
static inline Lanes lastLaneEverywhere(Lanes a) {
  const __m128i upper = _mm256_extracti128_si256(a.v, 1);
  return {_mm256_broadcastw_epi16(_mm_srli_si128(upper, 14))};
}
static inline int32_t largestLane(Lanes a) {
  const __m128i eight =
      _mm_max_epu16(_mm256_castsi256_si128(a.v), _mm256_extracti128_si256(a.v, 1));
  const __m128i least = _mm_minpos_epu16(_mm_xor_si128(eight, _mm_set1_epi16(-1)));
  return 65535 - (_mm_cvtsi128_si32(least) & 65535);
}

#elif defined(__SSE2__)

struct Lanes {
  __m128i lo;
  __m128i hi;
};

static inline Lanes load(const void* from) {
  const auto* at = static_cast<const __m128i*>(from);
  return {_mm_loadu_si128(at), _mm_loadu_si128(at + 1)};
}
static inline Lanes loadBytes(const uint8_t* from) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  const __m128i zero = _mm_setzero_si128();
  return {_mm_unpacklo_epi8(bytes, zero), _mm_unpackhi_epi8(bytes, zero)};
}
static inline void store(void* to, Lanes a) {
  auto* at = static_cast<__m128i*>(to);
  _mm_storeu_si128(at, a.lo);
  _mm_storeu_si128(at + 1, a.hi);
}
static inline Lanes splat(int32_t value) {
  const __m128i all = _mm_set1_epi16(static_cast<int16_t>(value));
  return {all, all};
}
static inline Lanes addSaturated(Lanes a, Lanes b) {
  return {_mm_adds_epu16(a.lo, b.lo), _mm_adds_epu16(a.hi, b.hi)};
}
static inline Lanes subtractSaturated(Lanes a, Lanes b) {
  return {_mm_subs_epu16(a.lo, b.lo), _mm_subs_epu16(a.hi, b.hi)};
}
static inline Lanes smaller(Lanes a, Lanes b) {
#if defined(__SSE4_1__)
  return {_mm_min_epu16(a.lo, b.lo), _mm_min_epu16(a.hi, b.hi)};
#else
  return {_mm_sub_epi16(a.lo, _mm_subs_epu16(a.lo, b.lo)),
          _mm_sub_epi16(a.hi, _mm_subs_epu16(a.hi, b.hi))};
#endif
}
static inline Lanes larger(Lanes a, Lanes b) {
#if defined(__SSE4_1__)
  return {_mm_max_epu16(a.lo, b.lo), _mm_max_epu16(a.hi, b.hi)};
#else
  return {_mm_add_epi16(b.lo, _mm_subs_epu16(a.lo, b.lo)),
          _mm_add_epi16(b.hi, _mm_subs_epu16(a.hi, b.hi))};
#endif
}
static inline Lanes equal(Lanes a, Lanes b) {
  return {_mm_cmpeq_epi16(a.lo, b.lo), _mm_cmpeq_epi16(a.hi, b.hi)};
}
static inline Lanes lessThan(Lanes a, Lanes b) {
  const __m128i ones = _mm_set1_epi16(-1);
  const __m128i zero = _mm_setzero_si128();
  return {_mm_xor_si128(_mm_cmpeq_epi16(_mm_subs_epu16(b.lo, a.lo), zero), ones),
          _mm_xor_si128(_mm_cmpeq_epi16(_mm_subs_epu16(b.hi, a.hi), zero), ones)};
}
static inline Lanes both(Lanes a, Lanes b) {
  return {_mm_and_si128(a.lo, b.lo), _mm_and_si128(a.hi, b.hi)};
}
static inline Lanes either(Lanes a, Lanes b) {
  return {_mm_or_si128(a.lo, b.lo), _mm_or_si128(a.hi, b.hi)};
}
static inline Lanes choose(Lanes mask, Lanes yes, Lanes no) {
#if defined(__SSE4_1__)
  return {_mm_blendv_epi8(no.lo, yes.lo, mask.lo), _mm_blendv_epi8(no.hi, yes.hi, mask.hi)};
#else
  return {_mm_or_si128(_mm_and_si128(mask.lo, yes.lo), _mm_andnot_si128(mask.lo, no.lo)),
          _mm_or_si128(_mm_and_si128(mask.hi, yes.hi), _mm_andnot_si128(mask.hi, no.hi))};
#endif
}
static inline bool anyBit(Lanes a) {
  const __m128i all = _mm_or_si128(a.lo, a.hi);
#if defined(__SSE4_1__)
  return _mm_testz_si128(all, all) == 0;
#else
  return _mm_movemask_epi8(_mm_cmpeq_epi8(all, _mm_setzero_si128())) != 0xFFFF;
#endif
}
static inline Lanes product(Lanes a, Lanes b) {
  return {_mm_mullo_epi16(a.lo, b.lo), _mm_mullo_epi16(a.hi, b.hi)};
}
static inline Lanes upperProduct(Lanes a, Lanes b) {
  return {_mm_mulhi_epu16(a.lo, b.lo), _mm_mulhi_epu16(a.hi, b.hi)};
}
static inline Lanes shiftedLeft(Lanes a, int32_t bits) {
  const __m128i count = _mm_cvtsi32_si128(bits);
  return {_mm_sll_epi16(a.lo, count), _mm_sll_epi16(a.hi, count)};
}
static inline Lanes shiftedRight(Lanes a, int32_t bits) {
  const __m128i count = _mm_cvtsi32_si128(bits);
  return {_mm_srl_epi16(a.lo, count), _mm_srl_epi16(a.hi, count)};
}
template <int32_t count>
static inline Lanes movedUp(Lanes a) {
  const __m128i ones = _mm_set1_epi16(-1);
  const auto joined = [](__m128i before, __m128i after) {
    return _mm_or_si128(_mm_srli_si128(before, 16 - 2 * count), _mm_slli_si128(after, 2 * count));
  };
  return {joined(ones, a.lo), joined(a.lo, a.hi)};
}
template <int32_t count>
static inline Lanes movedDown(Lanes a) {
  const __m128i ones = _mm_set1_epi16(-1);
  const auto joined = [](__m128i before, __m128i after) {
    return _mm_or_si128(_mm_srli_si128(before, 2 * count), _mm_slli_si128(after, 16 - 2 * count));
  };
  return {joined(a.lo, a.hi), joined(a.hi, ones)};
}
static inline Lanes firstLaneEverywhere(Lanes a) {
  return splat(_mm_extract_epi16(a.lo, 0));
}
static inline Lanes lastLaneEverywhere(Lanes a) {
  return splat(_mm_extract_epi16(a.hi, 7));
}
static inline int32_t largestLane(Lanes a) {
  Lanes most = larger(a, {a.hi, a.hi});
  most = larger(most, {_mm_srli_si128(most.lo, 8), most.hi});
  most = larger(most, {_mm_srli_si128(most.lo, 4), most.hi});
  most = larger(most, {_mm_srli_si128(most.lo, 2), most.hi});
  return _mm_extract_epi16(most.lo, 0);
}

#else

struct Lanes {
  uint16_t v[kLanes];
};

template <class Operation>
static inline Lanes perLane(Operation operation) {
  Lanes result;
  for (int32_t i = 0; i < kLanes; ++i) result.v[i] = static_cast<uint16_t>(operation(i));
  return result;
}

static inline Lanes load(const void* from) {
  Lanes a;
  __builtin_memcpy(&a, from, sizeof(a));
  return a;
}
static inline Lanes loadBytes(const uint8_t* from) {
  return perLane([=](int32_t i) { return from[i]; });
}
static inline void store(void* to, Lanes a) {
  __builtin_memcpy(to, &a, sizeof(a));
}
static inline Lanes splat(int32_t value) {
  return perLane([=](int32_t) { return value; });
}
static inline Lanes addSaturated(Lanes a, Lanes b) {
  return perLane([&](int32_t i) {
    const int32_t sum = a.v[i] + b.v[i];
    return sum > 65535 ? 65535 : sum;
  });
}
static inline Lanes subtractSaturated(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] > b.v[i] ? a.v[i] - b.v[i] : 0; });
}
static inline Lanes smaller(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] < b.v[i] ? a.v[i] : b.v[i]; });
}
static inline Lanes larger(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] > b.v[i] ? a.v[i] : b.v[i]; });
}
static inline Lanes equal(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] == b.v[i] ? 65535 : 0; });
}
static inline Lanes lessThan(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] < b.v[i] ? 65535 : 0; });
}
static inline Lanes both(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] & b.v[i]; });
}
static inline Lanes either(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return a.v[i] | b.v[i]; });
}
static inline Lanes choose(Lanes mask, Lanes yes, Lanes no) {
  return perLane([&](int32_t i) { return (mask.v[i] & yes.v[i]) | (~mask.v[i] & no.v[i]); });
}
static inline bool anyBit(Lanes a) {
  uint32_t bits = 0;
  for (uint16_t lane : a.v) bits |= lane;
  return bits != 0;
}
static inline Lanes product(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return uint32_t{a.v[i]} * b.v[i]; });
}
static inline Lanes upperProduct(Lanes a, Lanes b) {
  return perLane([&](int32_t i) { return (uint32_t{a.v[i]} * b.v[i]) >> 16; });
}
static inline Lanes shiftedLeft(Lanes a, int32_t bits) {
  return perLane([&](int32_t i) { return bits > 15 ? 0 : a.v[i] << bits; });
}
static inline Lanes shiftedRight(Lanes a, int32_t bits) {
  return perLane([&](int32_t i) { return bits > 15 ? 0 : a.v[i] >> bits; });
}
template <int32_t count>
static inline Lanes movedUp(Lanes a) {
  return perLane([&](int32_t i) { return i < count ? 65535 : a.v[i - count]; });
}
template <int32_t count>
static inline Lanes movedDown(Lanes a) {
  return perLane([&](int32_t i) { return i + count < kLanes ? a.v[i + count] : 65535; });
}
static inline Lanes firstLaneEverywhere(Lanes a) {
  return splat(a.v[0]);
}
static inline Lanes lastLaneEverywhere(Lanes a) {
  return splat(a.v[kLanes - 1]);
}
static inline int32_t largestLane(Lanes a) {
  int32_t most = 0;
  for (uint16_t lane : a.v) most = lane > most ? lane : most;
  return most;
}

#endif

// Whether some lane of a is less than the same lane of b.
static inline bool anyLess(Lanes a, Lanes b) {
  return anyBit(subtractSaturated(b, a));
}

static inline int32_t firstBit(uint32_t bits) {
  return __builtin_ctz(bits);
}

// The first `count` lanes (1 to 16) from and to memory that may end behind them; 0 in the others.
static inline Lanes loadPart(const void* from, int32_t count) {
  if (count >= kLanes) return load(from);
  uint16_t all[kLanes] = {};
  __builtin_memcpy(all, from, sizeof(uint16_t) * static_cast<uint32_t>(count));
  return load(all);
}
static inline void storePart(void* to, Lanes a, int32_t count) {
  if (count >= kLanes) return store(to, a);
  uint16_t all[kLanes];
  store(all, a);
  __builtin_memcpy(to, all, sizeof(uint16_t) * static_cast<uint32_t>(count));
}
