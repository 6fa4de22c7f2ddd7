// texel_sums: weighted sums of four bytes per column, by the instruction that multiplies 16-bit
// numbers and adds each two products; no compiler finds it in a loop. Everything here is static, as
// in set_procedures.

#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "vector/surface_passes.h"

#if defined(__AVX2__)

static inline void weighTexels(const int32_t* four, const int16_t* even, const int16_t* odd,
                               int32_t* sums) {
  const auto load = [](const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
  };
  const __m256i bytes = load(four);
  const __m256i mask = _mm256_set1_epi32(0x00FF00FF);
  const __m256i evenSum = _mm256_madd_epi16(_mm256_and_si256(bytes, mask), load(even));
  const __m256i oddSum = _mm256_madd_epi16(_mm256_srli_epi16(bytes, 8), load(odd));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(sums), _mm256_add_epi32(evenSum, oddSum));
}

#elif defined(__SSE2__)

static inline void weighTexels(const int32_t* four, const int16_t* even, const int16_t* odd,
                               int32_t* sums) {
  const auto load = [](const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
  };
  const __m128i mask = _mm_set1_epi32(0x00FF00FF);
  for (int32_t i = 0; i < kWeightedColumns; i += 4) {
    const __m128i bytes = load(four + i);
    const __m128i evenSum = _mm_madd_epi16(_mm_and_si128(bytes, mask), load(even + 2 * i));
    const __m128i oddSum = _mm_madd_epi16(_mm_srli_epi16(bytes, 8), load(odd + 2 * i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(sums + i), _mm_add_epi32(evenSum, oddSum));
  }
}

#else

static inline void weighTexels(const int32_t* four, const int16_t* even, const int16_t* odd,
                               int32_t* sums) {
  for (int32_t i = 0; i < kWeightedColumns; ++i) {
    sums[i] = even[2 * i] * (four[i] & 255) + odd[2 * i] * (four[i] >> 8 & 255) +
              even[2 * i + 1] * (four[i] >> 16 & 255) + odd[2 * i + 1] * (four[i] >> 24 & 255);
  }
}

#endif
