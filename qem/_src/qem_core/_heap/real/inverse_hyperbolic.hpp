// SPDX-License-Identifier: MIT
// What the inverse hyperbolic functions share. Each is a logarithm, of a y that is 1 or more:
//
//   asinh x = ln(x + sqrt(x^2 + 1))
//   acosh x = ln(x + sqrt(x^2 - 1))
//   atanh x = ln((1 + x)/(1 - x))/2
//
// HA of doubles has y in three parts and takes Ln's road: the parts after the first keep what is
// beyond 1 to the last bit, so that there is no case of its own near 0.
//
// Elsewhere ln y = k ln2 + 2 atanh((y - K)/(y + K)), K = 2^k, and with K = 1 the quotient, tanh of
// half of ln y, comes straight from the argument: that of asinh is sinh/(cosh + 1). HA of floats
// has lanes of double, whose bits to spare allow the shortest formulas.
//
// A formula tells what is its own:
//   name
//   odd, half        works on |x|; is half of ln y
//   rare             the lanes for the slow path
//   in_parts         y for HA of doubles
//   as_ratio         y for all others
//   special          settles an argument that is no number or has no finite result
#pragma once

#include <type_traits>

#include "../../frame/function_name.hpp"
#include "../../ln/table_log.hpp"
#include "../../ln/vdln_data.hpp"
#include "../../simd/polynomial.hpp"
#include "root.hpp"
#include "tables/inverse_hyperbolic_polynomials.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Where the squares of the lanes end.
template <class T>
inline constexpr T square_limit = 0x1p500;
template <>
inline constexpr float square_limit<float> = 0x1p60f;

// ---- HA of doubles -----------------------------------------------------------------------------

/// y + tail + low: y of at most 27 bits, the tail at most about a bit of y and without error; low
/// is what both lack.
template <class V>
struct LogArgument {
  V y, tail, low;
};

template <class V>
V short_part(V x) {
  return and_bits(x, UpperHalf<double>::m);
}

/// larger + smaller + low
template <class V>
LogArgument<V> sum_in_parts(V larger, V smaller, V low) {
  const V y = short_part(larger + smaller);
  return {y, (larger - y) + smaller, low};
}

/// sqrt(a + b^2), the second part the correction of the first. The root waits for none of the exact
/// sums.
template <class V>
TwoParts<V> root_of_sum(V a, V b) {
  const V root = square_root(a + b * b);
  const TwoParts<V> square = square_in_parts(b), sum = exact_sum(a, square.hi);
  const V residual = root_residual(sum.hi, root) + (sum.lo + square.lo);
  return {root, residual * (0.5 / maximum(root, splat<V>(0x1p-500)))};
}

/// ln of the argument times 2^doublings, as in table_log.hpp. m R is exact here, and so is the sum
/// of all that comes from y.
template <class V>
V log_of(const LogArgument<V>& x, double doublings = 0) {
  using Base = vdln_data;
  const V m = significand<Base>(x.y);
  const V R = nearest(short_reciprocal(m));
  const IndicesFrom2To<V, Base::k> index(R);
  const V scale = significand_scale<Base>(x.y) * R;
  const V r_of_y = m * R - 1.0, r_of_tail = x.tail * scale, r_of_low = x.low * scale;
  const V r = r_of_y + (r_of_tail + r_of_low), r2 = r * r;
  const V rest = r_of_low + pairwise(Base::ha_series, r, r2) * r2;

  V t_hi, t_lo;
  lookup(Base::full_table, index, t_hi, t_lo);
  const V exponent = exponent_field(x.y) + doublings;
  const V s = (exponent * Base::log2_hi + t_hi) + r_of_y;
  const V sum = s + r_of_tail;
  const V lost = (exponent * Base::log2_lo + t_lo) + (r_of_tail - (sum - s));
  return (lost + rest) + sum;
}

// ---- All others --------------------------------------------------------------------------------

/// 2^k, and k.
template <class V>
struct Power {
  V power, exponent;
};

/// The one that leaves y in [0.87, 1.74): atanh has ulps of half the size up to there, too small
/// for the errors of ln2 and of the quotient beside it.
template <class V>
Power<V> power_beside(Int<V> bits_of_y) {
  using T = Lane<V>;
  using F = Format<T>;
  constexpr auto bits = [](T x) { return __builtin_bit_cast(typename F::Bits, x); };
  constexpr auto up = bits(2) - bits(1.74), exponent_mask = bits(F::infinity);
  const V moved = as_vector<V>(add<V>(bits_of_y, bits_of(splat<V>(from_bits(up)))));
  const V power = and_bits(moved, exponent_mask);
  return {power, exponent_field(power) - T{F::bias}};
}

/// ln y = exponent ln2 + 2 atanh(s/2). It is s that formulas double, not the sum: half of a
/// denormal may not exist.
template <class V>
struct LogRatio {
  V exponent, s;
};

/// All bits set where K is 1, and where it is not.
template <class V>
V is_one(V power) {
  return equal(power, splat<V>(1));
}
template <class V>
V not_one(V power) {
  return greater(power, splat<V>(1));
}

template <class T, Level level>
inline constexpr const auto& log_ratio_series = vdlog_ratio_la;
template <>
inline constexpr const auto& log_ratio_series<float, Level::HA> = vslog_ratio_ha;
template <>
inline constexpr const auto& log_ratio_series<float, Level::LA> = vslog_ratio_la;
template <>
inline constexpr const auto& log_ratio_series<float, Level::EP> = vslog_ratio_ep;

/// The cube of s is kept from underflow as long as its square is.
template <class Series, class V>
V log_of(const LogRatio<V>& y, const Series& series) {
  using T = Lane<V>;
  constexpr T ln2 = 0x1.62E42FEFA39EFp-1, epsilon = Format<T>::epsilon;
  const V s2 = maximum(y.s * y.s, splat<V>(epsilon * epsilon));
  return y.exponent * ln2 + (y.s + (y.s * s2) * estrin(series, s2));
}

// ---- Kernels -----------------------------------------------------------------------------------

template <class Formula, class Element, Level level>
struct InverseHyperbolic {
  using T = Element;
  using Work = std::conditional_t<level == Level::HA, double, T>;
  static constexpr bool in_parts = level == Level::HA && sizeof(T) == sizeof(double);
  static constexpr int block = 32 / sizeof(T) * 2;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = Formula::name;
  static constexpr Environment environment = in_parts ? environment_x87_extended : environment_mode;

  /// A whole block's roots and quotients are under way before the first of them is waited for.
  template <class V, size_t vectors>
  static int pass(const V (&x)[1][vectors], V (&y)[1][vectors]) {
    decltype(argument(V{})) a[vectors];
#pragma GCC unroll 8
    for (size_t k = 0; k < vectors; ++k) a[k] = argument(x[0][k]);
#pragma GCC unroll 8
    for (size_t k = 0; k < vectors; ++k) y[0][k] = result(x[0][k], a[k]);
    return by_vector<V, vectors>([&](int k) { return Formula::rare(x[0][k]); });
  }

  static int slow(const T* px, T* py) {
    const double x = *px;
    int code = QEM_STATUS_OK;
    double y;
    if (!Formula::special(x, y, code)) y = alone(x);
    *py = static_cast<T>(y);
    return code;
  }

 private:
  template <class V>
  static V sign(V x) {
    return and_bits(x, bits_of(-Lane<V>{0}));
  }

  template <class V>
  static auto argument(V x) {
    const V a = Formula::odd ? and_bits(x, ~bits_of(-Lane<V>{0})) : x;
    if constexpr (in_parts) {
      return Formula::in_parts(a);
    } else {
      return Formula::template as_ratio<level == Level::HA>(a);
    }
  }

  template <class V, class Argument>
  static V result(V x, const Argument& a) {
    V y;
    if constexpr (in_parts) {
      y = log_of(a);
    } else {
      y = log_of(a, log_ratio_series<T, level>);
    }
    if constexpr (Formula::half) y = Lane<V>{0.5} * y;
    return Formula::odd ? either(y, sign(x)) : y;
  }

  /// One number by HA of doubles; beyond the lanes' limit the result is ln 2 |x|.
  static double alone(double number) {
    using V = __m128d;
    using HA = InverseHyperbolic<Formula, double, Level::HA>;
    const V x[1][1] = {{splat<V>(number)}};
    V y[1][1];
    const double size = __builtin_fabs(number);
    if (size < square_limit<double>) {
      HA::pass(x, y);
      return y[0][0][0];
    }
    y[0][0] = log_of(sum_in_parts(splat<V>(size * 0x1p-100), V{}, V{}), 101);
    return __builtin_copysign(y[0][0][0], number);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
