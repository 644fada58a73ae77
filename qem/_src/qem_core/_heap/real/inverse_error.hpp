// SPDX-License-Identifier: MIT
// What ErfInv, ErfcInv and CdfNormInv share.
//
// Each has a zero and a factor d that vanishes with it: x, 1 - x, 2x - 1. The rest of the function
// is g(w), where w = 1 - |d| is exact and g even in d, thus smooth: a polynomial for each part of
// the binades of w, and neither logarithm nor square root. The upper bits of w count the rows of
// the table, the lower ones make r, which is the significand within its row less the row's middle.
//
// A function is a record:
//   argument(x)         d and w
//   d_low(x, d)         what the rounding of d took away, unless it is exact
//   w_low(w, d)         the same of w, which is in [1/2, 1) then
//   zero                where d is 0
//   rare<T>(x)          all bits set in lanes that are not for the rows
//   table<T, level>()
//   slow(x, y)          one element of any value; returns a status code
//   name, environment, block<T, level>
#pragma once

#include "../../frame/function_name.hpp"
#include "../../frame/guarded.hpp"
#include "../../frame/level.hpp"
#include "../../simd/exact.hpp"
#include "../../simd/format.hpp"
#include "../../simd/lookup.hpp"
#include "inverse_error_table.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class V>
struct InverseErrorArgument {
  V d, w;
};

/// All bits set in the lanes that are not in [low, high), whose bounds are powers of two.
#ifdef __AVX__
template <class V>
V lanes_outside(V x, Lane<V> low, Lane<V> high) {
  return either(compare<_CMP_NGE_UQ>(x, splat<V>(low)), compare<_CMP_NLT_UQ>(x, splat<V>(high)));
}
#else
inline __m128 lanes_outside(__m128 x, float low, float high) {
  using F = Format<float>;
  return as_vector<__m128>(outside_words(bits_of(x), F::high_word(low), F::high_word(high) - 1));
}
inline __m128d lanes_outside(__m128d x, double low, double high) {
  using F = Format<double>;
  const __m128i words = outside_words(bits_of(x), F::high_word(low), F::high_word(high) - 1);
  return as_vector<__m128d>(_mm_shuffle_epi32(words, _MM_SHUFFLE(3, 3, 1, 1)));
}
#endif

// ---- Rows --------------------------------------------------------------------------------------

/// Where each lane finds the row of its w.
template <class V, class Table>
class InverseErrorRows {
  static constexpr int shift = (wide_lanes<V> ? 20 : Format<float>::fraction_bits) - Table::bits;
  static constexpr int row_of_1 = Format<Lane<V>>::high_word(1) >> shift;

 public:
  InverseErrorRows(const Table& table, V w) {
    const Words<V> words(w);
    constexpr int per_lane = sizeof(Lane<V>) / 4;
    for (int lane = 0; lane < lanes<V>; ++lane) {
      const uint32_t high = words.word[(lane + 1) * per_lane - 1];
      row_[lane] = table.row[row_of_1 - static_cast<int>(high >> shift)];
    }
  }
  const Lane<V>* operator[](int lane) const { return row_[lane]; }

 private:
  const Lane<V>* row_[lanes<V>];
};

/// Whole vectors at this point: the compiler would rather load their numbers one by one, and
/// compute one of them far behind the other.
template <class V>
void as_vectors(V& a, V& b) {
  asm("" : "+x"(a), "+x"(b));
}

/// Numbers k and k + 1 of the lanes' rows.
template <class Rows>
void take_two(const Rows& row, int k, __m128d& first, __m128d& second) {
  __m128d a = _mm_loadu_pd(row[0] + k), b = _mm_loadu_pd(row[1] + k);
  as_vectors(a, b);
  first = _mm_unpacklo_pd(a, b);
  second = _mm_unpackhi_pd(a, b);
}
/// Number k.
template <class Rows>
void take_one(const Rows& row, int k, __m128d& x) {
  x = _mm_loadh_pd(_mm_load_sd(row[0] + k), row[1] + k);
}
/// A row's four numbers.
template <class Rows>
void take_four(const Rows& row, __m128 (&c)[4]) {
  for (int k = 0; k < 4; ++k) c[k] = _mm_load_ps(row[k]);
  _MM_TRANSPOSE4_PS(c[0], c[1], c[2], c[3]);
}
#ifdef __AVX__
template <class Rows>
void take_two(const Rows& row, int k, __m256d& first, __m256d& second) {
  const auto two = [&](int lane) {
    const __m256d lower = _mm256_castpd128_pd256(_mm_loadu_pd(row[lane] + k));
    return _mm256_insertf128_pd(lower, _mm_loadu_pd(row[lane + 2] + k), 1);
  };
  __m256d a = two(0), b = two(1);
  as_vectors(a, b);
  first = _mm256_unpacklo_pd(a, b);
  second = _mm256_unpackhi_pd(a, b);
}
template <class Rows>
void take_one(const Rows& row, int k, __m256d& x) {
  const __m128d lo = _mm_loadh_pd(_mm_load_sd(row[0] + k), row[1] + k);
  const __m128d hi = _mm_loadh_pd(_mm_load_sd(row[2] + k), row[3] + k);
  x = _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
}
template <class Rows>
void take_four(const Rows& row, __m256 (&c)[4]) {
  __m256 a[4];
  for (int k = 0; k < 4; ++k) {
    const __m256 lower = _mm256_castps128_ps256(_mm_load_ps(row[k]));
    a[k] = _mm256_insertf128_ps(lower, _mm_load_ps(row[k + 4]), 1);
  }
  const __m256 ab_lo = _mm256_unpacklo_ps(a[0], a[1]), ab_hi = _mm256_unpackhi_ps(a[0], a[1]);
  const __m256 cd_lo = _mm256_unpacklo_ps(a[2], a[3]), cd_hi = _mm256_unpackhi_ps(a[2], a[3]);
  c[0] = _mm256_shuffle_ps(ab_lo, cd_lo, _MM_SHUFFLE(1, 0, 1, 0));
  c[1] = _mm256_shuffle_ps(ab_lo, cd_lo, _MM_SHUFFLE(3, 2, 3, 2));
  c[2] = _mm256_shuffle_ps(ab_hi, cd_hi, _MM_SHUFFLE(1, 0, 1, 0));
  c[3] = _mm256_shuffle_ps(ab_hi, cd_hi, _MM_SHUFFLE(3, 2, 3, 2));
}
#endif

/// Numbers `first` to `end` of the rows as coefficients of 1, r, r^2, ...: the sum of the even
/// ones, and that of the odd ones over r.
template <class V>
struct EvenAndOdd {
  V even, odd;
};
template <int first, int end, class V, class Rows>
EvenAndOdd<V> even_and_odd(const Rows& row, V r2) {
  V even, odd, a, b;
  int k = end - 2;
  if constexpr ((end - first) % 2 == 0) {
    take_two(row, k, even, odd);
  } else {
    V top;
    take_one(row, end - 1, top);
    take_two(row, k -= 1, a, odd);
    even = top * r2 + a;
  }
#pragma GCC unroll 8
  for (k -= 2; k >= first; k -= 2) {
    take_two(row, k, a, b);
    even = even * r2 + a;
    odd = odd * r2 + b;
    if (k > first) as_vectors(even, odd);
  }
  return {even, odd};
}

// ---- Levels ------------------------------------------------------------------------------------

/// The upper bits of doubles: a product of two such numbers is exact.
inline constexpr uint64_t upper_half_mask = 0xFFFFFFFFF8000000;
template <class V>
V upper_half(V x) {
  return and_bits(x, upper_half_mask);
}
inline double upper_half(double x) { return from_bits(bits_of(x) & upper_half_mask); }

/// The argument that is for the level.
template <Level level, class L, class H, class E>
constexpr const auto& of_level(const L& la, const H& ha, const E& ep) {
  if constexpr (level == Level::LA) return la;
  if constexpr (level == Level::HA) return ha;
  if constexpr (level == Level::EP) return ep;
}

/// d g(w).
template <class Function, Level level, class V, class Table>
V inverse_error(const Table& table, V x) {
  using F = Format<Lane<V>>;
  using Bits = typename F::Bits;
  constexpr Bits within_row = (Bits{1} << (F::fraction_bits - Table::bits)) - 1;
  constexpr int numbers = sizeof table.row[0] / sizeof table.row[0][0];

  const InverseErrorArgument<V> argument = Function::argument(x);
  const V d = argument.d, w = argument.w;
  const InverseErrorRows<V, Table> row(table, w);
  const V m = or_bits(and_bits(w, within_row), __builtin_bit_cast(Bits, Lane<V>{1}));
  V r = m - splat<V>(table.middle[0]);

  if constexpr (!wide_lanes<V>) {
    // The coefficient of r^4 is a fixed multiple of that of r^3, about what it is in all rows.
    constexpr Lane<V> fourth_to_third = -0.6875f;
    V c[4];
    take_four(row, c);
    const V r2 = r * r;
    const V g_rest = (c[3] * (r2 * fourth_to_third + r) + c[2]) * r2 + c[1] * r;
    return c[0] * d + g_rest * d;
  } else if constexpr (level == Level::HA && numbers == 17) {
    if constexpr (requires { Function::w_low(w, d); }) r = r + 2.0 * Function::w_low(w, d);
    const V r2 = r * r;
    V c0, c0_low, c1, c1_low, c2, c2_low;
    const auto [even, odd] = even_and_odd<6, numbers>(row, r2);
    take_two(row, 4, c2, c2_low);
    take_two(row, 2, c1, c1_low);
    take_two(row, 0, c0, c0_low);
    const V low = (c2_low * r2 + c1_low * r) + c0_low;
    const V g_rest = c1 * r + ((((even * r + odd * r2) + c2) * r2) + low);
    const V d_high = upper_half(d);
    V d_rest = d - d_high;
    if constexpr (requires { Function::d_low(x, d); }) d_rest = d_rest + Function::d_low(x, d);
    return c0 * d_high + (g_rest * d + c0 * d_rest);
  } else if constexpr (level == Level::LA) {
    // A rounding less than (c0 + g_rest) d has.
    const V r2 = r * r;
    V c0, c1;
    const auto [even, odd] = even_and_odd<2, numbers>(row, r2);
    take_two(row, 0, c0, c1);
    const V g_rest = (odd * r2 + c1) * r + even * r2;
    return c0 * d + g_rest * d;
  } else {
    const auto [even, odd] = even_and_odd<0, numbers>(row, r * r);
    return (odd * r + even) * d;
  }
}

/// A kernel's operation. Floats at HA are computed in lanes of double.
template <class Function, class Element, Level level>
struct InverseError {
  using T = Element;
  using Work = std::conditional_t<level == Level::HA, double, T>;
  static constexpr int block = Function::template block<T, level>;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = Function::name;
  static constexpr Environment environment = Function::environment;

  /// Lanes that are not served compute the function's zero, which raises nothing.
  template <class V, size_t vectors>
  static int pass(const V (&x)[1][vectors], V (&y)[1][vectors]) {
    return by_vector<V, vectors>([&](int k) {
      const V rare = Function::template rare<T>(x[0][k]);
      const V served = select(rare, splat<V>(Function::zero), x[0][k]);
      y[0][k] = inverse_error<Function, level>(Function::template table<T, level>(), served);
      return mask_of(rare);
    });
  }

  static int slow(const T* x, T* y) { return Function::slow(x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
