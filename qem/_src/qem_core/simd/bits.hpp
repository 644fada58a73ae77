// SPDX-License-Identifier: MIT
// Bit patterns of lanes: integer arithmetic, logic and choice.
#pragma once

#include "types.hpp"

namespace orv {
inline namespace ORV_TAG {

inline __m128i bits_of(__m128d v) { return _mm_castpd_si128(v); }
inline __m128i bits_of(__m128 v) { return _mm_castps_si128(v); }
inline __m128d as_vector(__m128i i, __m128d) { return _mm_castsi128_pd(i); }
inline __m128 as_vector(__m128i i, __m128) { return _mm_castsi128_ps(i); }
#ifdef __AVX__
inline Int256 bits_of(__m256d v) {
  return {_mm_castpd_si128(_mm256_castpd256_pd128(v)),
          _mm_castpd_si128(_mm256_extractf128_pd(v, 1))};
}
inline Int256 bits_of(__m256 v) {
  return {_mm_castps_si128(_mm256_castps256_ps128(v)),
          _mm_castps_si128(_mm256_extractf128_ps(v, 1))};
}
inline __m256d as_vector(Int256 i, __m256d) {
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_castsi128_pd(i.lo)),
                              _mm_castsi128_pd(i.hi), 1);
}
inline __m256 as_vector(Int256 i, __m256) {
  return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_castsi128_ps(i.lo)),
                              _mm_castsi128_ps(i.hi), 1);
}
#endif
template <class V>
V as_vector(Int<V> i) {
  return as_vector(i, V{});
}

template <class F>
__m128i by_halves(F f, __m128i a) {
  return f(a);
}
template <class F>
__m128i by_halves(F f, __m128i a, __m128i b) {
  return f(a, b);
}
#ifdef __AVX__
template <class F>
Int256 by_halves(F f, Int256 a) {
  return {f(a.lo), f(a.hi)};
}
template <class F>
Int256 by_halves(F f, Int256 a, Int256 b) {
  return {f(a.lo, b.lo), f(a.hi, b.hi)};
}
#endif

/// Integer arithmetic on lanes as wide as V's.
template <class V>
inline constexpr bool wide_lanes = sizeof(Lane<V>) == 8;

template <class V>
Int<V> add(Int<V> a, Int<V> b) {
  return by_halves(
      [](__m128i x, __m128i y) {
        return wide_lanes<V> ? _mm_add_epi64(x, y) : _mm_add_epi32(x, y);
      },
      a, b);
}
template <class V>
Int<V> subtract(Int<V> a, Int<V> b) {
  return by_halves(
      [](__m128i x, __m128i y) {
        return wide_lanes<V> ? _mm_sub_epi64(x, y) : _mm_sub_epi32(x, y);
      },
      a, b);
}
template <class V, int count>
Int<V> shift_left(Int<V> a) {
  return by_halves(
      [](__m128i x) { return wide_lanes<V> ? _mm_slli_epi64(x, count) : _mm_slli_epi32(x, count); },
      a);
}
template <class V, int count>
Int<V> shift_right_logical(Int<V> a) {
  return by_halves(
      [](__m128i x) { return wide_lanes<V> ? _mm_srli_epi64(x, count) : _mm_srli_epi32(x, count); },
      a);
}
/// Arithmetic. Lanes of 64 bits have no such instruction: the sign bit is brought down, and borrows
/// from above fill the rest.
template <class V, int count>
Int<V> shift_right(Int<V> a) {
  if constexpr (wide_lanes<V>) {
    const __m128i sign = _mm_set1_epi64x(INT64_MIN);
    const __m128i moved_sign = _mm_srli_epi64(sign, count);
    return by_halves(
        [=](__m128i x) {
          return _mm_sub_epi64(_mm_xor_si128(_mm_srli_epi64(x, count), moved_sign), moved_sign);
        },
        a);
  } else {
    return by_halves([](__m128i x) { return _mm_srai_epi32(x, count); }, a);
  }
}
/// Lanes below 2^15 times a signed number.
template <class V>
Int<V> multiply_short(Int<V> a, int16_t b) {
  const __m128i factor = _mm_set1_epi32(b);
  return by_halves([=](__m128i x) { return _mm_madd_epi16(x, factor); }, a);
}
/// Lanes below 2^16 times another such number, without the lower 16 bits of the product.
template <class V>
Int<V> multiply_short_high(Int<V> a, uint16_t b) {
  const __m128i factor = _mm_set1_epi16(static_cast<int16_t>(b));
  return by_halves([=](__m128i x) { return _mm_mulhi_epu16(x, factor); }, a);
}

/// Lanes of 64 and of 32 bits with a mask, without leaving the floating-point side.
inline __m128d and_bits(__m128d v, uint64_t mask) {
  return _mm_and_pd(v, splat<__m128d>(from_bits(mask)));
}
inline __m128 and_bits(__m128 v, uint32_t mask) {
  return _mm_and_ps(v, splat<__m128>(from_bits(mask)));
}
inline __m128d or_bits(__m128d v, uint64_t mask) {
  return _mm_or_pd(v, splat<__m128d>(from_bits(mask)));
}
inline __m128 or_bits(__m128 v, uint32_t mask) {
  return _mm_or_ps(v, splat<__m128>(from_bits(mask)));
}
#ifdef __AVX__
inline __m256d and_bits(__m256d v, uint64_t mask) {
  return _mm256_and_pd(v, splat<__m256d>(from_bits(mask)));
}
inline __m256 and_bits(__m256 v, uint32_t mask) {
  return _mm256_and_ps(v, splat<__m256>(from_bits(mask)));
}
inline __m256d or_bits(__m256d v, uint64_t mask) {
  return _mm256_or_pd(v, splat<__m256d>(from_bits(mask)));
}
inline __m256 or_bits(__m256 v, uint32_t mask) {
  return _mm256_or_ps(v, splat<__m256>(from_bits(mask)));
}
#endif

template <class V>
V absolute(V x) {
  return and_bits(x, ~bits_of(-Lane<V>{0}));
}

/// Bits of a where the mask has them set, of b elsewhere; the mask covers whole lanes.
inline __m128d select(__m128d mask, __m128d a, __m128d b) {
  return _mm_or_pd(_mm_and_pd(mask, a), _mm_andnot_pd(mask, b));
}
inline __m128 select(__m128 mask, __m128 a, __m128 b) {
  return _mm_or_ps(_mm_and_ps(mask, a), _mm_andnot_ps(mask, b));
}
#ifdef __AVX__
inline __m256d select(__m256d mask, __m256d a, __m256d b) {
  return _mm256_or_pd(_mm256_and_pd(mask, a), _mm256_andnot_pd(mask, b));
}
inline __m256 select(__m256 mask, __m256 a, __m256 b) {
  return _mm256_or_ps(_mm256_and_ps(mask, a), _mm256_andnot_ps(mask, b));
}

/// a where the lane's sign bit is set, b elsewhere. The instruction itself, as GCC takes the
/// intrinsic apart into scalars where there is no AVX2.
inline __m128d by_sign(__m128d sign, __m128d a, __m128d b) {
  __m128d y;
  asm("vblendvpd %3, %2, %1, %0" : "=x"(y) : "x"(b), "xm"(a), "x"(sign));
  return y;
}
inline __m128 by_sign(__m128 sign, __m128 a, __m128 b) {
  __m128 y;
  asm("vblendvps %3, %2, %1, %0" : "=x"(y) : "x"(b), "xm"(a), "x"(sign));
  return y;
}
inline __m256d by_sign(__m256d sign, __m256d a, __m256d b) {
  __m256d y;
  asm("vblendvpd %3, %2, %1, %0" : "=x"(y) : "x"(b), "xm"(a), "x"(sign));
  return y;
}
inline __m256 by_sign(__m256 sign, __m256 a, __m256 b) {
  __m256 y;
  asm("vblendvps %3, %2, %1, %0" : "=x"(y) : "x"(b), "xm"(a), "x"(sign));
  return y;
}
#endif

inline __m128d either(__m128d a, __m128d b) { return _mm_or_pd(a, b); }
inline __m128 either(__m128 a, __m128 b) { return _mm_or_ps(a, b); }
inline __m128d both(__m128d a, __m128d b) { return _mm_and_pd(a, b); }
inline __m128 both(__m128 a, __m128 b) { return _mm_and_ps(a, b); }
inline __m128d exclusive(__m128d a, __m128d b) { return _mm_xor_pd(a, b); }
inline __m128 exclusive(__m128 a, __m128 b) { return _mm_xor_ps(a, b); }
/// a without the bits of the mask
inline __m128d without(__m128d mask, __m128d a) { return _mm_andnot_pd(mask, a); }
inline __m128 without(__m128 mask, __m128 a) { return _mm_andnot_ps(mask, a); }
#ifdef __AVX__
inline __m256d either(__m256d a, __m256d b) { return _mm256_or_pd(a, b); }
inline __m256 either(__m256 a, __m256 b) { return _mm256_or_ps(a, b); }
inline __m256d both(__m256d a, __m256d b) { return _mm256_and_pd(a, b); }
inline __m256 both(__m256 a, __m256 b) { return _mm256_and_ps(a, b); }
inline __m256d exclusive(__m256d a, __m256d b) { return _mm256_xor_pd(a, b); }
inline __m256 exclusive(__m256 a, __m256 b) { return _mm256_xor_ps(a, b); }
inline __m256d without(__m256d mask, __m256d a) { return _mm256_andnot_pd(mask, a); }
inline __m256 without(__m256 mask, __m256 a) { return _mm256_andnot_ps(mask, a); }
#endif

}  // namespace ORV_TAG
}  // namespace orv
