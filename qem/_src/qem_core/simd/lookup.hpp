// Table look-up, a table entry a lane.
//
// Indices travel through memory: a store and scalar loads leave the shuffle port to the entries,
// and measured a fifth faster than extracting the lanes (double exponential, either word size).
#pragma once

#include "vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Two adjacent numbers, such as the high and low parts of one value.
template <class T>
struct alignas(2 * sizeof(T)) Pair {
  T first, second;
};

/// The low 32-bit words of the lanes, each an index.
template <class V>
struct Indices {
  static constexpr int stride = sizeof(Lane<V>) / 4;
  alignas(sizeof(V)) uint32_t word[lanes<V> * stride];

  explicit Indices(V v) {
    memcpy(word, &v, sizeof v);
    asm("" : "+m"(word));  // keeps the compiler from turning the loads into extractions
  }
  uint32_t operator[](int lane) const { return word[lane * stride]; }
};

inline __m128d lookup(const double* table, const Indices<__m128d>& i) {
  return _mm_loadh_pd(_mm_load_sd(table + i[0]), table + i[1]);
}
inline void lookup(const Pair<double>* table, const Indices<__m128d>& i, __m128d& first,
                   __m128d& second) {
  const __m128d a = _mm_load_pd(&table[i[0]].first), b = _mm_load_pd(&table[i[1]].first);
  first = _mm_unpacklo_pd(a, b);
  second = _mm_unpackhi_pd(a, b);
}

inline __m128 lookup(const float* table, const Indices<__m128>& i) {
  const __m128 a = _mm_unpacklo_ps(_mm_load_ss(table + i[0]), _mm_load_ss(table + i[1]));
  const __m128 b = _mm_unpacklo_ps(_mm_load_ss(table + i[2]), _mm_load_ss(table + i[3]));
  return _mm_movelh_ps(a, b);
}
inline void lookup(const Pair<float>* table, const Indices<__m128>& i, __m128& first,
                   __m128& second) {
  const auto two = [&](int k) {
    __m128d entries = _mm_load_sd(reinterpret_cast<const double*>(table + i[k]));
    entries = _mm_loadh_pd(entries, reinterpret_cast<const double*>(table + i[k + 1]));
    return _mm_castpd_ps(entries);
  };
  const __m128 a = two(0), b = two(2);
  first = _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
  second = _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
}

#ifdef __AVX__
inline __m256d lookup(const double* table, const Indices<__m256d>& i) {
  const __m128d lo = _mm_loadh_pd(_mm_load_sd(table + i[0]), table + i[1]);
  const __m128d hi = _mm_loadh_pd(_mm_load_sd(table + i[2]), table + i[3]);
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
}
inline void lookup(const Pair<double>* table, const Indices<__m256d>& i, __m256d& first,
                   __m256d& second) {
  const auto two = [&](int k) {
    const __m256d lower = _mm256_castpd128_pd256(_mm_load_pd(&table[i[k]].first));
    return _mm256_insertf128_pd(lower, _mm_load_pd(&table[i[k + 2]].first), 1);
  };
  const __m256d a = two(0), b = two(1);
  first = _mm256_unpacklo_pd(a, b);
  second = _mm256_unpackhi_pd(a, b);
}

inline __m256 lookup(const float* table, const Indices<__m256>& i) {
  const auto four = [&](int k) {
    __m128 entries = _mm_load_ss(table + i[k]);
    entries = _mm_insert_ps(entries, _mm_load_ss(table + i[k + 1]), 0x10);
    entries = _mm_insert_ps(entries, _mm_load_ss(table + i[k + 2]), 0x20);
    return _mm_insert_ps(entries, _mm_load_ss(table + i[k + 3]), 0x30);
  };
  return _mm256_insertf128_ps(_mm256_castps128_ps256(four(0)), four(4), 1);
}
inline void lookup(const Pair<float>* table, const Indices<__m256>& i, __m256& first,
                   __m256& second) {
  const auto four = [&](int k) {
    const auto entry = [&](int j) { return reinterpret_cast<const double*>(table + i[j]); };
    const __m128d lo = _mm_loadh_pd(_mm_load_sd(entry(k)), entry(k + 1));
    const __m128d hi = _mm_loadh_pd(_mm_load_sd(entry(k + 4)), entry(k + 5));
    return _mm256_castpd_ps(_mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1));
  };
  const __m256 a = four(0), b = four(2);
  first = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
  second = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
}
#endif

}  // namespace ORV_TAG
}  // namespace orv
