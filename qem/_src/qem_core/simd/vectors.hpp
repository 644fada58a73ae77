// What the compiler's vector types lack: loads and stores, lane masks, and integer arithmetic on
// the bit patterns of their lanes. Arithmetic itself is written with the built-in operators.
//
// Every unit that includes this is compiled for one instruction set, ORV_TAG, and its inline
// namespace keeps one unit's instances out of another's.
#pragma once

#include <immintrin.h>
#include <stdint.h>
#include <string.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

// ---- Vector types ------------------------------------------------------------------------------

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

// ---- Bit patterns ------------------------------------------------------------------------------

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
/// Low words of 64-bit lanes, multiplied to 64 bits.
template <class V>
Int<V> multiply_low_words(Int<V> a, Int<V> b) {
  static_assert(wide_lanes<V>);
  return by_halves([](__m128i x, __m128i y) { return _mm_mul_epu32(x, y); }, a, b);
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

// ---- Conversions -------------------------------------------------------------------------------

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

// ---- Lane masks: bit k for lane k, quiet on quiet NaN ------------------------------------------

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
inline int high_word_above(__m128d x, uint32_t limit) {
  const __m128i absolute = _mm_and_si128(bits_of(x), _mm_set1_epi32(0x7FFFFFFF));
  const __m128i above = _mm_cmpgt_epi32(absolute, _mm_set1_epi32(static_cast<int32_t>(limit)));
  return mask_of(_mm_castsi128_pd(above));
}
inline int high_word_above(__m128 x, uint32_t limit) {
  const __m128i absolute = _mm_and_si128(bits_of(x), _mm_set1_epi32(0x7FFFFFFF));
  const __m128i above = _mm_cmpgt_epi32(absolute, _mm_set1_epi32(static_cast<int32_t>(limit)));
  return mask_of(_mm_castsi128_ps(above));
}
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
inline __m128d high_word_from(__m128d x, uint32_t bound) {
  const __m128i absolute = _mm_and_si128(bits_of(x), _mm_set1_epi32(0x7FFFFFFF));
  const __m128i before = _mm_set1_epi32(static_cast<int32_t>(bound - 1));
  return as_vector<__m128d>(_mm_cmpgt_epi32(absolute, before));
}
#ifdef __AVX__
inline int high_word_above(__m256d x, uint32_t limit) {
  const __m256d bound = splat<__m256d>(from_bits(static_cast<uint64_t>(limit + 1) << 32));
  return mask_of(compare<_CMP_NLT_UQ>(and_bits(x, ~0ull >> 1), bound));
}
inline int high_word_above(__m256 x, uint32_t limit) {
  return mask_of(compare<_CMP_NLE_UQ>(and_bits(x, 0x7FFFFFFFu), splat<__m256>(from_bits(limit))));
}

/// All bits set in the lanes that are not positive normal numbers.
inline __m256d not_positive_normal_lanes(__m256d x) {
  return either(compare<_CMP_NGE_UQ>(x, splat<__m256d>(0x1p-1022)),
                equal(x, splat<__m256d>(__builtin_inf())));
}
/// All bits set in the lanes whose absolute value has a high word from `bound` on, NaN included.
inline __m256d high_word_from(__m256d x, uint32_t bound) {
  const double least = from_bits(uint64_t{bound} << 32);
  return compare<_CMP_NLT_UQ>(and_bits(x, ~0ull >> 1), splat<__m256d>(least));
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
