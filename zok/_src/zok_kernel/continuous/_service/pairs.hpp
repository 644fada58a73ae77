// SPDX-License-Identifier: MIT
// Arrays of pairs into two arrays, and back. Elements have any alignment.
#pragma once

#include "../../../zok_sub_kernel/_service/lanes.hpp"

namespace orv {
inline namespace ORV_TAG {

struct PairOf4 {
  __m256d first, second;
};
struct PairOf8 {
  __m256 first, second;
};

/// Elements of even and of odd index, of two vectors in a row.
inline PairOf4 split(__m256d x, __m256d y) {
  const __m256d low = _mm256_permute2f128_pd(x, y, 0x20), high = _mm256_permute2f128_pd(x, y, 0x31);
  return {_mm256_unpacklo_pd(low, high), _mm256_unpackhi_pd(low, high)};
}
inline PairOf8 split(__m256 x, __m256 y) {
  const __m256 low = _mm256_permute2f128_ps(x, y, 0x20), high = _mm256_permute2f128_ps(x, y, 0x31);
  return {_mm256_shuffle_ps(low, high, 0x88), _mm256_shuffle_ps(low, high, 0xDD)};
}

/// The way back.
inline PairOf4 join(__m256d first, __m256d second) {
  const __m256d low = _mm256_unpacklo_pd(first, second), high = _mm256_unpackhi_pd(first, second);
  return {_mm256_permute2f128_pd(low, high, 0x20), _mm256_permute2f128_pd(low, high, 0x31)};
}
inline PairOf8 join(__m256 first, __m256 second) {
  const __m256 low = _mm256_unpacklo_ps(first, second), high = _mm256_unpackhi_ps(first, second);
  return {_mm256_permute2f128_ps(low, high, 0x20), _mm256_permute2f128_ps(low, high, 0x31)};
}

/// first[k], second[k] = pairs[2 k], pairs[2 k + 1]. One of them may be the array of pairs.
template <class T>
void split_pairs(int32_t n, const T* pairs, T* first, T* second) {
  using L = Lanes<T>;
  int32_t k = 0;
  for (; k <= n - L::count; k += L::count) {
    const auto both = split(L::load(pairs + 2 * k), L::load(pairs + 2 * k + L::count));
    L::store(first + k, both.first);
    L::store(second + k, both.second);
  }
  for (const T* pair = pairs + 2 * k; k < n; ++k, pair += 2) {
    const T x = pair[0], y = pair[1];
    first[k] = x;
    second[k] = y;
  }
}

/// pairs[2 k], pairs[2 k + 1] = first[k], second[k]
template <class T>
void join_pairs(int32_t n, const T* first, const T* second, T* pairs) {
  using L = Lanes<T>;
  int32_t k = 0;
  for (; k <= n - L::count; k += L::count) {
    const auto both = join(L::load(first + k), L::load(second + k));
    L::store(pairs + 2 * k, both.first);
    L::store(pairs + 2 * k + L::count, both.second);
  }
  for (T* pair = pairs + 2 * k; k < n; ++k, pair += 2) {
    pair[0] = first[k];
    pair[1] = second[k];
  }
}

}  // namespace ORV_TAG
}  // namespace orv
