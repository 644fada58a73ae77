// SPDX-License-Identifier: MIT
// Lane masks: bit k for lane k, quiet on quiet NaN; comparisons, the greater and the lesser.
#pragma once

#include "bits.hpp"

namespace orv {
inline namespace ORV_TAG {

#ifdef __AVX__
inline int mask_of(__m256d v) { return _mm256_movemask_pd(v); }
inline int mask_of(__m256 v) { return _mm256_movemask_ps(v); }

template <int predicate>
__m256d compare(__m256d a, __m256d b) {
  return _mm256_cmp_pd(a, b, predicate);
}
template <int predicate>
__m256 compare(__m256 a, __m256 b) {
  return _mm256_cmp_ps(a, b, predicate);
}
template <int predicate>
__m128d compare(__m128d a, __m128d b) {
  return _mm_cmp_pd(a, b, predicate);
}
template <int predicate>
__m128 compare(__m128 a, __m128 b) {
  return _mm_cmp_ps(a, b, predicate);
}
#endif
inline int mask_of(__m128d v) { return _mm_movemask_pd(v); }
inline int mask_of(__m128 v) { return _mm_movemask_ps(v); }

/// x, with 0 in place of NaN: for operations that signal on any NaN.
inline __m128d number_or_zero(__m128d x) { return _mm_and_pd(x, _mm_cmpord_pd(x, x)); }
inline __m128 number_or_zero(__m128 x) { return _mm_and_ps(x, _mm_cmpord_ps(x, x)); }
/// The greater one, the lesser one; b if one of them is NaN.
inline __m128d maximum(__m128d a, __m128d b) { return _mm_max_pd(a, b); }
inline __m128 maximum(__m128 a, __m128 b) { return _mm_max_ps(a, b); }
inline __m128d minimum(__m128d a, __m128d b) { return _mm_min_pd(a, b); }
inline __m128 minimum(__m128 a, __m128 b) { return _mm_min_ps(a, b); }
#ifdef __AVX__
inline __m256d maximum(__m256d a, __m256d b) { return _mm256_max_pd(a, b); }
inline __m256 maximum(__m256 a, __m256 b) { return _mm256_max_ps(a, b); }
inline __m256d minimum(__m256d a, __m256d b) { return _mm256_min_pd(a, b); }
inline __m256 minimum(__m256 a, __m256 b) { return _mm256_min_ps(a, b); }
#endif

/// All bits set in the lanes where a > b; neither is NaN.
inline __m128d greater(__m128d a, __m128d b) { return _mm_cmpgt_pd(a, b); }
inline __m128 greater(__m128 a, __m128 b) { return _mm_cmpgt_ps(a, b); }
/// All bits set in the lanes where a = b.
inline __m128d equal(__m128d a, __m128d b) { return _mm_cmpeq_pd(a, b); }
inline __m128 equal(__m128 a, __m128 b) { return _mm_cmpeq_ps(a, b); }
#ifdef __AVX__
inline __m256d equal(__m256d a, __m256d b) { return compare<_CMP_EQ_OQ>(a, b); }
inline __m256 equal(__m256 a, __m256 b) { return compare<_CMP_EQ_OQ>(a, b); }
inline __m256d greater(__m256d a, __m256d b) { return compare<_CMP_GT_OQ>(a, b); }
inline __m256 greater(__m256 a, __m256 b) { return compare<_CMP_GT_OQ>(a, b); }
#endif

/// Lanes whose absolute value has a high word above `limit`, NaN included.
inline __m128i words_above(__m128i words, uint32_t limit) {
  return _mm_cmpgt_epi32(_mm_and_si128(words, _mm_set1_epi32(0x7FFFFFFF)),
                         _mm_set1_epi32(static_cast<int32_t>(limit)));
}
inline int high_word_above(__m128d x, uint32_t limit) {
  return mask_of(_mm_castsi128_pd(words_above(bits_of(x), limit)));
}
inline int high_word_above(__m128 x, uint32_t limit) {
  return mask_of(_mm_castsi128_ps(words_above(bits_of(x), limit)));
}
/// All bits set in such lanes.
inline __m128d lanes_above(__m128d x, uint32_t limit) {
  const __m128i above = words_above(bits_of(x), limit);
  return as_vector<__m128d>(_mm_shuffle_epi32(above, _MM_SHUFFLE(3, 3, 1, 1)));
}
inline __m128 lanes_above(__m128 x, uint32_t limit) {
  return as_vector<__m128>(words_above(bits_of(x), limit));
}
#ifdef __AVX__
inline __m256d lanes_above(__m256d x, uint32_t limit) {
  const __m256d bound = splat<__m256d>(from_bits(static_cast<uint64_t>(limit + 1) << 32));
  return compare<_CMP_NLT_UQ>(and_bits(x, ~0ull >> 1), bound);
}
inline __m256 lanes_above(__m256 x, uint32_t limit) {
  return compare<_CMP_NLE_UQ>(and_bits(x, 0x7FFFFFFFu), splat<__m256>(from_bits(limit)));
}
inline int high_word_above(__m256d x, uint32_t limit) { return mask_of(lanes_above(x, limit)); }
inline int high_word_above(__m256 x, uint32_t limit) { return mask_of(lanes_above(x, limit)); }
#endif
/// Lanes that are zero, denormal, infinite or NaN, by their high words.
template <class V>
int not_normal(V x) {
  using F = Format<Lane<V>>;
  // Without the sign and with the first normal number's brought down to the least integer, normal
  // numbers are those below where infinity's comes to.
  constexpr uint32_t first = 2 * F::high_word(F::smallest_normal), least = 0x80000000;
  constexpr uint32_t last = 2 * F::high_word(F::infinity) - 1 - first + least;
  const __m128i twice = _mm_add_epi32(bits_of(x), bits_of(x));
  const __m128i moved = _mm_add_epi32(twice, _mm_set1_epi32(static_cast<int32_t>(least - first)));
  const __m128i above = _mm_cmpgt_epi32(moved, _mm_set1_epi32(static_cast<int32_t>(last)));
  return mask_of(as_vector<V>(above));
}
/// Lanes whose high word is outside [low, high], bounds of positive numbers; all negative ones.
inline __m128i outside_words(__m128i words, uint32_t low, uint32_t high) {
  constexpr uint32_t sign = 0x80000000;  // unsigned order by the signed comparison that there is
  return _mm_cmpgt_epi32(_mm_sub_epi32(words, _mm_set1_epi32(static_cast<int32_t>(low ^ sign))),
                         _mm_set1_epi32(static_cast<int32_t>((high - low) ^ sign)));
}
inline int high_word_outside(__m128d x, uint32_t low, uint32_t high) {
  return mask_of(_mm_castsi128_pd(outside_words(bits_of(x), low, high)));
}
inline int high_word_outside(__m128 x, uint32_t low, uint32_t high) {
  return mask_of(_mm_castsi128_ps(outside_words(bits_of(x), low, high)));
}
inline __m128d not_positive_normal_lanes(__m128d x) {
  return as_vector<__m128d>(outside_words(bits_of(x), 0x00100000, 0x7FEFFFFF));
}
#ifdef __AVX__
/// All bits set in the lanes that are not positive normal numbers.
inline __m256d not_positive_normal_lanes(__m256d x) {
  return either(compare<_CMP_NGE_UQ>(x, splat<__m256d>(0x1p-1022)),
                equal(x, splat<__m256d>(__builtin_inf())));
}
/// Lanes that are not in [low, high], NaN included.
template <class V>
int outside(V x, Lane<V> low, Lane<V> high) {
  const V below = compare<_CMP_LT_OQ>(x, splat<V>(low));
  const V above = compare<_CMP_NLE_UQ>(x, splat<V>(high));
  return mask_of(either(below, above));
}
#else
/// Lanes that are not in [low, high], NaN included.
inline int outside(__m128d x, double low, double high) {
  const __m128d number = number_or_zero(x);
  const __m128d inside = _mm_and_pd(_mm_cmpge_pd(number, splat<__m128d>(low)),
                                    _mm_cmple_pd(number, splat<__m128d>(high)));
  return mask_of(_mm_and_pd(inside, _mm_cmpord_pd(x, x))) ^ 3;
}
inline int outside(__m128 x, float low, float high) {
  const __m128 number = number_or_zero(x);
  const __m128 inside = _mm_and_ps(_mm_cmpge_ps(number, splat<__m128>(low)),
                                   _mm_cmple_ps(number, splat<__m128>(high)));
  return mask_of(_mm_and_ps(inside, _mm_cmpord_ps(x, x))) ^ 15;
}
#endif

}  // namespace ORV_TAG
}  // namespace orv
