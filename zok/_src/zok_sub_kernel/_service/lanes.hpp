// SPDX-License-Identifier: MIT
// AVX vectors of either precision, with masks for the vector at the end of an array.
#pragma once

#include <immintrin.h>
#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

constexpr intptr_t clamp(intptr_t n, intptr_t most) { return n < 0 ? 0 : n > most ? most : n; }

template <class T>
struct Lanes;

template <>
struct Lanes<double> {
  using Vector = __m256d;
  static constexpr int count = 4;

  static Vector load(const double* p) { return _mm256_loadu_pd(p); }
  static Vector load(const double* p, __m256i mask) { return _mm256_maskload_pd(p, mask); }
  static void store(double* p, Vector x) { _mm256_storeu_pd(p, x); }
  static void store(double* p, __m256i mask, Vector x) { _mm256_maskstore_pd(p, mask, x); }
  static Vector broadcast(const double* p) { return _mm256_broadcast_sd(p); }
  static Vector all(double x) { return _mm256_set1_pd(x); }
  static Vector steps() { return _mm256_setr_pd(0, 1, 2, 3); }

  /// A mask of the first `n` lanes: none below 0, all above the last.
  static __m256i first(intptr_t n) {
    static constexpr int64_t bits[] = {-1, -1, -1, -1, 0, 0, 0, 0};
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bits + count - clamp(n, count)));
  }
};

template <>
struct Lanes<float> {
  using Vector = __m256;
  static constexpr int count = 8;

  static Vector load(const float* p) { return _mm256_loadu_ps(p); }
  static Vector load(const float* p, __m256i mask) { return _mm256_maskload_ps(p, mask); }
  static void store(float* p, Vector x) { _mm256_storeu_ps(p, x); }
  static void store(float* p, __m256i mask, Vector x) { _mm256_maskstore_ps(p, mask, x); }
  static Vector broadcast(const float* p) { return _mm256_broadcast_ss(p); }
  static Vector all(float x) { return _mm256_set1_ps(x); }
  static Vector steps() { return _mm256_setr_ps(0, 1, 2, 3, 4, 5, 6, 7); }

  static __m256i first(intptr_t n) {
    static constexpr int32_t bits[] = {-1, -1, -1, -1, -1, -1, -1, -1, 0, 0, 0, 0, 0, 0, 0, 0};
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bits + count - clamp(n, count)));
  }
};

/// Four observations of four variables, from rows of variables to rows of observations.
inline void transpose_four(const double* x, intptr_t stride, double* out, intptr_t out_stride) {
  const __m256d a = _mm256_loadu_pd(x), b = _mm256_loadu_pd(x + stride);
  const __m256d c = _mm256_loadu_pd(x + 2 * stride), d = _mm256_loadu_pd(x + 3 * stride);
  const __m256d ab_even = _mm256_unpacklo_pd(a, b), ab_odd = _mm256_unpackhi_pd(a, b);
  const __m256d cd_even = _mm256_unpacklo_pd(c, d), cd_odd = _mm256_unpackhi_pd(c, d);
  _mm256_storeu_pd(out, _mm256_permute2f128_pd(ab_even, cd_even, 0x20));
  _mm256_storeu_pd(out + out_stride, _mm256_permute2f128_pd(ab_odd, cd_odd, 0x20));
  _mm256_storeu_pd(out + 2 * out_stride, _mm256_permute2f128_pd(ab_even, cd_even, 0x31));
  _mm256_storeu_pd(out + 3 * out_stride, _mm256_permute2f128_pd(ab_odd, cd_odd, 0x31));
}

inline void transpose_four(const float* x, intptr_t stride, float* out, intptr_t out_stride) {
  __m128 a = _mm_loadu_ps(x), b = _mm_loadu_ps(x + stride);
  __m128 c = _mm_loadu_ps(x + 2 * stride), d = _mm_loadu_ps(x + 3 * stride);
  _MM_TRANSPOSE4_PS(a, b, c, d);
  _mm_storeu_ps(out, a);
  _mm_storeu_ps(out + out_stride, b);
  _mm_storeu_ps(out + 2 * out_stride, c);
  _mm_storeu_ps(out + 3 * out_stride, d);
}

/// Brings a block of `variables` rows, n apart, into rows of observations.
template <class T>
void gather_rows(const T* x, intptr_t n, intptr_t variables, intptr_t count, T* out,
                 intptr_t stride) {
  intptr_t j = 0;
  for (; j + 4 <= variables; j += 4) {
    intptr_t i = 0;
    for (; i + 4 <= count; i += 4) transpose_four(x + j * n + i, n, out + i * stride + j, stride);
    for (; i < count; ++i) {
      for (intptr_t k = j; k < j + 4; ++k) out[i * stride + k] = x[k * n + i];
    }
  }
  for (; j < variables; ++j) {
    for (intptr_t i = 0; i < count; ++i) out[i * stride + j] = x[j * n + i];
  }
}

}  // namespace ORV_TAG
}  // namespace orv
