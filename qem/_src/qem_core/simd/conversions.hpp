// SPDX-License-Identifier: MIT
// Whole numbers, exponents, reciprocals and roots, and pairs taken apart and put together.
#pragma once

#include "bits.hpp"

namespace orv {
inline namespace ORV_TAG {

#ifdef __SSE4_1__
/// A whole number by the processor's rounding instruction. The immediate, a _MM_FROUND_ constant,
/// tells which one, and whether a change of value raises the inexact flag.
template <int immediate>
__m128d to_whole(__m128d x) {
  return _mm_round_pd(x, immediate);
}
template <int immediate>
__m128 to_whole(__m128 x) {
  return _mm_round_ps(x, immediate);
}
#ifdef __AVX__
template <int immediate>
__m256d to_whole(__m256d x) {
  return _mm256_round_pd(x, immediate);
}
template <int immediate>
__m256 to_whole(__m256 x) {
  return _mm256_round_ps(x, immediate);
}
#endif
#endif

/// Sign and exponent of each lane's bit pattern, as a number.
inline __m128 exponent_field(__m128 x) { return _mm_cvtepi32_ps(_mm_srli_epi32(bits_of(x), 23)); }
inline __m128d exponent_field(__m128d x) {
  return _mm_cvtepi32_pd(
      _mm_srli_epi32(_mm_shuffle_epi32(bits_of(x), _MM_SHUFFLE(3, 1, 3, 1)), 20));
}
inline __m128 to_float(__m128i i) { return _mm_cvtepi32_ps(i); }
/// 1/x to a float's precision or more, by division: estimates differ between makers.
inline __m128 short_reciprocal(__m128 x) { return 1.0f / x; }
#ifdef __AVX__
inline __m128d short_reciprocal(__m128d x) {
  const __m128 two = _mm_cvtpd_ps(x);
  __m128 twice = _mm_movelh_ps(two, two);  // no zero to divide by
  asm("" : "+x"(twice));                   // nor one that the compiler finds good enough
  return _mm_cvtps_pd(short_reciprocal(twice));
}
#else
// Two doubles are divided in less time than they are narrowed and widened.
inline __m128d short_reciprocal(__m128d x) { return 1.0 / x; }
#endif
#ifdef __AVX__
inline __m256d exponent_field(__m256d x) {
  const __m128 lo = _mm256_castps256_ps128(_mm256_castpd_ps(x));
  const __m128 hi = _mm256_extractf128_ps(_mm256_castpd_ps(x), 1);
  const __m128 high_words = _mm_shuffle_ps(lo, hi, _MM_SHUFFLE(3, 1, 3, 1));
  return _mm256_cvtepi32_pd(_mm_srli_epi32(_mm_castps_si128(high_words), 20));
}
inline __m256 short_reciprocal(__m256 x) { return 1.0f / x; }
inline __m256d short_reciprocal(__m256d x) {
  return _mm256_cvtps_pd(short_reciprocal(_mm256_cvtpd_ps(x)));
}

/// Signed 32-bit lanes as floats.
inline __m256 to_float(Int256 i) {
  const __m256i both_halves = _mm256_insertf128_si256(_mm256_castsi128_si256(i.lo), i.hi, 1);
  return _mm256_cvtepi32_ps(both_halves);
}

inline __m256 exponent_field(__m256 x) {
  return to_float(by_halves([](__m128i half) { return _mm_srli_epi32(half, 23); }, bits_of(x)));
}

/// The nearest whole number, ties to even.
template <class V>
V nearest(V x) {
  return to_whole<_MM_FROUND_NINT | _MM_FROUND_NO_EXC>(x);
}
#else
// Without a rounding instruction: adding and taking off 1.5 * 2^52 (2^23), for |x| well below it.
inline __m128d nearest(__m128d x) { return (x + 0x1.8p52) - 0x1.8p52; }
inline __m128 nearest(__m128 x) { return (x + 0x1.8p23f) - 0x1.8p23f; }
#endif

/// Correctly rounded.
inline __m128d square_root(__m128d x) { return _mm_sqrt_pd(x); }
inline __m128 square_root(__m128 x) { return _mm_sqrt_ps(x); }
#ifdef __AVX__
inline __m256d square_root(__m256d x) { return _mm256_sqrt_pd(x); }
inline __m256 square_root(__m256 x) { return _mm256_sqrt_ps(x); }
#endif

// ---- Pairs in turn -----------------------------------------------------------------------------

/// Pairs as they lie in memory, taken apart: x0 y0 x1 y1 ... of a, then of b.
inline void deinterleave(__m128d a, __m128d b, __m128d& x, __m128d& y) {
  x = _mm_unpacklo_pd(a, b);
  y = _mm_unpackhi_pd(a, b);
}
inline void deinterleave(__m128 a, __m128 b, __m128& x, __m128& y) {
  x = _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
  y = _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
}
/// And put together.
inline void interleave(__m128d x, __m128d y, __m128d& a, __m128d& b) {
  a = _mm_unpacklo_pd(x, y);
  b = _mm_unpackhi_pd(x, y);
}
inline void interleave(__m128 x, __m128 y, __m128& a, __m128& b) {
  a = _mm_unpacklo_ps(x, y);
  b = _mm_unpackhi_ps(x, y);
}
#ifdef __AVX__
inline void deinterleave(__m256d a, __m256d b, __m256d& x, __m256d& y) {
  const __m256d lo = _mm256_permute2f128_pd(a, b, 0x20), hi = _mm256_permute2f128_pd(a, b, 0x31);
  x = _mm256_unpacklo_pd(lo, hi);
  y = _mm256_unpackhi_pd(lo, hi);
}
inline void deinterleave(__m256 a, __m256 b, __m256& x, __m256& y) {
  const __m256 lo = _mm256_permute2f128_ps(a, b, 0x20), hi = _mm256_permute2f128_ps(a, b, 0x31);
  x = _mm256_shuffle_ps(lo, hi, _MM_SHUFFLE(2, 0, 2, 0));
  y = _mm256_shuffle_ps(lo, hi, _MM_SHUFFLE(3, 1, 3, 1));
}
inline void interleave(__m256d x, __m256d y, __m256d& a, __m256d& b) {
  const __m256d lo = _mm256_unpacklo_pd(x, y), hi = _mm256_unpackhi_pd(x, y);
  a = _mm256_permute2f128_pd(lo, hi, 0x20);
  b = _mm256_permute2f128_pd(lo, hi, 0x31);
}
inline void interleave(__m256 x, __m256 y, __m256& a, __m256& b) {
  const __m256 lo = _mm256_unpacklo_ps(x, y), hi = _mm256_unpackhi_ps(x, y);
  a = _mm256_permute2f128_ps(lo, hi, 0x20);
  b = _mm256_permute2f128_ps(lo, hi, 0x31);
}
#endif

}  // namespace ORV_TAG
}  // namespace orv
