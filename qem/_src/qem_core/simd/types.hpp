// SPDX-License-Identifier: MIT
// The vector types, their scalars, loads and stores. Arithmetic itself is written with the
// compiler's operators.
#pragma once

#include <immintrin.h>
#include <stdint.h>
#include <string.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct VectorsOf;
template <class V>
struct LanesOf;

template <>
struct VectorsOf<double> {
  using Narrow = __m128d;
#ifdef __AVX__
  using Wide = __m256d;
#else
  using Wide = __m128d;
#endif
};
template <>
struct VectorsOf<float> {
  using Narrow = __m128;
#ifdef __AVX__
  using Wide = __m256;
#else
  using Wide = __m128;
#endif
};

/// The widest vector of the unit's instruction set, and the one that single elements go through.
template <class T>
using Wide = typename VectorsOf<T>::Wide;
template <class T>
using Narrow = typename VectorsOf<T>::Narrow;

/// Bit patterns of a vector's lanes, in halves where integers have no 256-bit form.
#ifdef __AVX__
struct Int256 {
  __m128i lo, hi;
};
#endif

template <>
struct LanesOf<__m128d> {
  using T = double;
  using Int = __m128i;
  static constexpr int count = 2;
};
template <>
struct LanesOf<__m128> {
  using T = float;
  using Int = __m128i;
  static constexpr int count = 4;
};
#ifdef __AVX__
template <>
struct LanesOf<__m256d> {
  using T = double;
  using Int = Int256;
  static constexpr int count = 4;
};
template <>
struct LanesOf<__m256> {
  using T = float;
  using Int = Int256;
  static constexpr int count = 8;
};
#endif

template <class V>
inline constexpr int lanes = LanesOf<V>::count;
template <class V>
using Int = typename LanesOf<V>::Int;
template <class V>
using Lane = typename LanesOf<V>::T;

// ---- Scalars -----------------------------------------------------------------------------------

inline double from_bits(uint64_t bits) {
  double x;
  memcpy(&x, &bits, sizeof x);
  return x;
}
inline float from_bits(uint32_t bits) {
  float x;
  memcpy(&x, &bits, sizeof x);
  return x;
}
inline uint64_t bits_of(double x) {
  uint64_t bits;
  memcpy(&bits, &x, sizeof bits);
  return bits;
}
inline uint32_t bits_of(float x) {
  uint32_t bits;
  memcpy(&bits, &x, sizeof bits);
  return bits;
}

/// The same value, out of the compiler's sight: what is computed from it is computed at run time,
/// under the control words in force, and raises its flags.
template <class T>
inline T opaque(T x) {
  asm volatile("" : "+m"(x));
  return x;
}

// ---- Loads and stores, no alignment assumed ----------------------------------------------------

template <class V>
V load(const Lane<V>* p) {
  V v;
  memcpy(&v, p, sizeof v);
  return v;
}

template <class V>
void store(Lane<V>* p, V v) {
  memcpy(p, &v, sizeof v);
}
#ifdef __AVX__
// In two halves, as everything that comes out of integer arithmetic is in halves already.
inline void store(double* p, __m256d v) {
  _mm_storeu_pd(p, _mm256_castpd256_pd128(v));
  _mm_storeu_pd(p + 2, _mm256_extractf128_pd(v, 1));
}
#endif

/// A number at any byte, as arrays may begin there. Copied as bytes, a double would go through two
/// integer registers in 32-bit code, and a load of it would wait until both have reached memory.
template <class T>
struct [[gnu::packed, gnu::may_alias]] Anywhere {
  T x;
};
template <class T>
T load_one(const T* p) {
  return reinterpret_cast<const Anywhere<T>*>(p)->x;
}

/// Lane 0 alone.
inline void store_low(double* p, __m128d v) { reinterpret_cast<Anywhere<double>*>(p)->x = v[0]; }
inline void store_low(float* p, __m128 v) { reinterpret_cast<Anywhere<float>*>(p)->x = v[0]; }

/// Floats in lanes of double, rounded on the way back.
inline __m128d load_widened(const float* p, __m128d) {
  double two;
  memcpy(&two, p, sizeof two);
  return _mm_cvtps_pd(_mm_castpd_ps(_mm_set_sd(two)));
}
inline void store_narrowed(float* p, __m128d v) {
  const __m128 floats = _mm_cvtpd_ps(v);
  memcpy(p, &floats, sizeof floats / 2);
}
inline void store_low(float* p, __m128d v) {
  const __m128 floats = _mm_cvtpd_ps(v);
  memcpy(p, &floats, sizeof *p);
}
#ifdef __AVX__
inline __m256d load_widened(const float* p, __m256d) { return _mm256_cvtps_pd(load<__m128>(p)); }
inline void store_narrowed(float* p, __m256d v) { store(p, _mm256_cvtpd_ps(v)); }
#endif

/// All lanes with one value.
inline __m128d splat(double x, __m128d) { return _mm_set1_pd(x); }
inline __m128 splat(float x, __m128) { return _mm_set1_ps(x); }
#ifdef __AVX__
inline __m256d splat(double x, __m256d) { return _mm256_set1_pd(x); }
inline __m256 splat(float x, __m256) { return _mm256_set1_ps(x); }
#endif
template <class V>
V splat(Lane<V> x) {
  return splat(x, V{});
}

}  // namespace ORV_TAG
}  // namespace orv
