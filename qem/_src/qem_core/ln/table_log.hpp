// SPDX-License-Identifier: MIT
// What the logarithms with a table share: the reduction of the argument, the assembly of the
// result, and the slow path. dLn, Log10 and Log1p are made of it.
//
// x = 2^e m. The whole number R nearest to 1/m, by a division of floats, makes m R = 1 + r with a
// small r, and log x = e log 2 - log R + log(1 + r): a table for log R, a polynomial for the
// rest. The least and the greatest R both stand for a power of two, and their table entries are
// exactly minus the term in log 2, so that the result keeps its relative accuracy on both sides
// of 1.
//
// A base is a record of constants and tables:
//   T                   float or double
//   k                   R is from 2^k to 2^(k + 1)
//   log2_hi, log2_lo    log 2 in two parts; an exponent times the first is exact
//   log2                the same in one
//   log_e               log e; and where that is not 1
//   linear_hi, _lo      log e in two parts, the first of 7 bits
//   full_table          two parts of -log(R/2^(k + 1)) - (bias - full_from) log 2
//   full_from           where the full table's exponent counts from: 0 for doubles, the bias for
//                       floats, whose second part would be too coarse otherwise
//   short_table         -log(R/2^(k + 1)) for R above 2^(k + 1)/sqrt2, else -log(R/2^k)
//   ha_, la_, ep_series (log(1 + r) - r log e)/r^2, ascending
#pragma once

#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "../simd/format.hpp"
#include "../simd/lookup.hpp"
#include "../simd/polynomial.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Masks of the upper halves of m, whose product with R is exact, and of r, whose product with log
/// e is.
template <class T>
struct UpperHalf;
template <>
struct UpperHalf<double> {
  static constexpr uint64_t m = 0xFFFFFFFFFC000000, r = 0xFFFFFFFFF8000000;
};
template <>
struct UpperHalf<float> {
  static constexpr uint32_t m = 0xFFFFF000, r = 0xFFFFF000;
};

template <class V>
int not_positive_normal(V x) {
  using F = Format<Lane<V>>;
  return outside(x, F::smallest_normal, F::largest);
}

/// m in [2^-(k + 1), 2^-k) of positive normal numbers.
template <class Base, class V>
V significand(V x) {
  using F = Format<Lane<V>>;
  using Bits = typename F::Bits;
  constexpr Bits fraction = (Bits{1} << F::fraction_bits) - 1;
  constexpr Bits exponent_of_m = Bits{F::bias - Base::k - 1} << F::fraction_bits;
  return or_bits(and_bits(x, fraction), exponent_of_m);
}

/// m/x, a power of two.
template <class Base, class V>
V significand_scale(V x) {
  using F = Format<Lane<V>>;
  using Bits = typename F::Bits;
  constexpr Bits exponent_mask = Bits{2 * F::bias + 1} << F::fraction_bits;
  constexpr Bits exponent_sum = Bits{2 * F::bias - Base::k - 1} << F::fraction_bits;
  return as_vector<V>(
      subtract<V>(bits_of(splat<V>(from_bits(exponent_sum))), bits_of(and_bits(x, exponent_mask))));
}

/// m R - 1, at HA and LA without error.
template <Level level, class V>
V remainder(V m, V R) {
  using T = Lane<V>;
  if constexpr (level == Level::EP) return m * R - T{1};
  const V m_hi = and_bits(m, UpperHalf<T>::m);
  const V m_lo = m - m_hi;
  return (m_hi * R - T{1}) + m_lo * R;
}

/// c[0] + c[1] r + ..., in pairs.
template <class C, int n, class V>
V pairwise(const C (&c)[n], V r, V r2) {
  if constexpr (n == 1) return splat<V>(c[0]);
  if constexpr (n == 2) return c[1] * r + c[0];
  if constexpr (n == 4) return (c[3] * r + c[2]) * r2 + (c[1] * r + c[0]);
  if constexpr (n == 5) return (c[4] * r2 + (c[3] * r + c[2])) * r2 + (c[1] * r + c[0]);
}

/// log x, or the log of x + tail, where the tail is too small for x to hold it.
template <class Base, Level level, class V, class... Tail>
V table_log(V x, Tail... tail) {
  using T = Lane<V>;
  using F = Format<T>;
  constexpr bool natural = Base::log_e == T{1};
  const V m = significand<Base>(x);
  const V R = nearest(short_reciprocal(m));
  const IndicesFrom2To<V, Base::k> index(R);
  const V r_of_x = remainder<level>(m, R);
  const V scale = significand_scale<Base>(x) * R;
  const V r = (r_of_x + ... + (tail * scale));
  const V r2 = r * r;
  V exponent = exponent_field(x);

  if constexpr (level == Level::HA) {
    V t_hi, t_lo;
    lookup(Base::full_table, index, t_hi, t_lo);
    if constexpr (Base::full_from != 0) exponent = exponent - T{Base::full_from};
    const V high = exponent * Base::log2_hi + t_hi;  // exact
    const V low = exponent * Base::log2_lo + t_lo;
    V linear = r_of_x, rest = pairwise(Base::ha_series, r, r2) * r2;
    if constexpr (!natural) {  // both products with log e's first part are exact
      const V r_hi = and_bits(r, UpperHalf<T>::r);
      linear = r_hi * Base::linear_hi;
      rest = (rest + r * Base::linear_lo) + (r - r_hi) * Base::linear_hi;
    }
    V s = high, lost = low;
    const auto add = [&](V term) {  // |term| <= |s| or s = 0
      const V sum = s + term;
      lost = lost + (term - (sum - s));
      s = sum;
    };
    add(linear);
    (add(tail * scale), ...);
    return (lost + rest) + s;
  } else {
    V linear = r, q;
    if constexpr (!natural) linear = r * Base::log_e;
    if constexpr (level == Level::LA) q = pairwise(Base::la_series, r, r2) * r2;
    if constexpr (level == Level::EP) q = pairwise(Base::ep_series, r, r2) * r2;
    // Counting the exponent from the side of sqrt2 on which m lies leaves log(1 + r) alone near 1.
    constexpr T middle = Base::k == 9 ? 724 : Base::k == 8 ? 362 : 181;
    const V above = greater(R, splat<V>(middle));
    exponent = exponent - (T{F::bias - 1} + both(above, splat<V>(T{1})));
    const V t = lookup(Base::short_table, index, V{});
    return ((linear + q) + t) + exponent * Base::log2;
  }
}

// ---- Slow paths: zero, denormals, negatives, infinity and NaN ----------------------------------

/// What is no number to take a logarithm of. Returns false if x is positive and finite.
template <class T>
bool special_log(T x, T& y, int& code) {
  const T zero = opaque(T{0});
  code = QEM_STATUS_OK;
  if (x > 0 && x <= Format<T>::largest) return false;
  if (x == 0) {
    y = T{-1} / zero;
    code = QEM_STATUS_SINGULARITY;
  } else if (x < 0) {
    y = zero / zero;
    code = QEM_STATUS_DOMAIN;
  } else {
    y = x * x;
  }
  return true;
}

/// To HA accuracy at every level.
template <class Base>
int log_cout_rare(const double* px, double* py) {
  int code;
  if (special_log(*px, *py, code)) return code;
  double x = *px;
  int exponent = -1023;
  if (x < Format<double>::smallest_normal) {
    x *= 0x1p60;
    exponent -= 60;
  }
  // (ln(1 + d) - d)/d^2
  static constexpr double series[] = {-0.5,
                                      0.33333333333334386,
                                      -0.25000000000003386,
                                      0.19999999911565072,
                                      -0.1666666651884978,
                                      0.1428756883852146,
                                      -0.1250214602960357};
  const double d = x - 1.0;
  if (__builtin_fabs(d) <= 0x1.4p-7) {
    *py = d * Base::log_e + d * d * horner(series, d) * Base::log_e;
    return QEM_STATUS_OK;
  }
  // m in [1, 2) against the table row of the nearest 64th
  exponent += static_cast<int>(bits_of(x) >> 52);
  const double m = from_bits((bits_of(x) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
  const double* row = Base::slow_table + 3 * (bits_of(m + 0x1.0000000000040p46) & 0x7F);
  const double m_hi = (m + 0x1p21) - 0x1p21, m_lo = m - m_hi;
  const double r_hi = row[0] * m_hi - 1.0, r_lo = row[0] * m_lo, r = r_hi + r_lo;
  const double linear = r_hi * Base::linear_hi;  // exact
  const double high = exponent * Base::log2_hi + row[1];
  const double low = exponent * Base::log2_lo + row[2];
  const double s = high + linear;
  const double lost = linear - (s - high);
  const double rest = r_hi * Base::linear_lo + (horner(series, r) * r * r + r_lo) * Base::log_e;
  *py = ((rest + low) + lost) + s;
  return QEM_STATUS_OK;
}

/// A float's denormal is an ordinary double, and a short series in doubles is ample.
template <class Base>
int log_cout_rare(const float* px, float* py) {
  int code;
  if (special_log(*px, *py, code)) return code;
  constexpr uint64_t two_thirds = 0x3FE5555555555555;
  // atanh(s)/s - 1 in s^2, up to s = 1/5
  static constexpr double series[] = {1 / 3.0, 1 / 5.0, 1 / 7.0, 1 / 9.0, 1 / 11.0, 1 / 13.0};
  const double x = *px;
  const auto k = static_cast<int>(static_cast<int64_t>(bits_of(x) - two_thirds) >> 52);
  const double m = from_bits(bits_of(x) - (static_cast<uint64_t>(k) << 52));
  const double s = (m - 1.0) / (m + 1.0), s2 = s * s;
  const double ln = k * 0x1.62E42FEFA39EFp-1 + 2.0 * (s + s * s2 * horner(series, s2));
  *py = static_cast<float>(ln * Base::log_e_double);
  return QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
