// SPDX-License-Identifier: MIT
// Logarithms of extended numbers, in two parts for those who multiply them.
//
// x = 2^e m, and m times a short reciprocal of the interval it lies in is 1 + r, exactly so when r
// has two parts. ln(1 + r) comes from its series: the square's upper half is exact, the cube and on
// fit a double.
#pragma once

#include <orv/qem.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// ln(1 + r) where |r| is below 2^-7, and |lower| below an ulp of r. With `exact` the second part
/// is good for itself, not just to round the sum.
template <bool exact>
[[gnu::always_inline]] inline TwoParts<Extended> log1p_in_parts(const Approached& of,
                                                                Extended lower = -0.0L) {
  constexpr double third = 0x1.5555555555555p-2, fifth = 0x1.999999999999Ap-3,
                   sixth = 0x1.5555555555555p-3, seventh = 0x1.2492492492492p-3,
                   ninth = 0x1.C71C71C71C71Cp-4;
  const Extended r = of.value;
  const double t = of.near, v = t * t;
  const double linear = t * (((third - t * 0.25) + v * (fifth - t * sixth)) +
                             v * v * ((seventh - t * 0.125) + v * (ninth - t * 0.1)));
  const Extended square = r * r;
  if (!exact) return {r, lower + square * (linear - 0.5)};
  const Halves<Extended> half(r);
  const TwoParts<Extended> sum = exact_sum_ordered(r, -0.5L * (half.hi * half.hi));
  const Extended rest = half.lo * (half.hi + 0.5L * half.lo);
  return {sum.hi, sum.lo + (lower * (1 - r) + (square * linear - rest))};
}

/// The interval of a double, and what leads from there to 1.
struct LogInterval {
  int index, exponent;
  double reciprocal;

  explicit LogInterval(double x) {
    const uint32_t high = Format<double>::high_word(x);
    index = static_cast<int>(high >> 12) & 255;
    exponent = static_cast<int>(high >> 20) - 1023;
    reciprocal = orv_qem_core_double_rcp_table_256[index] * double_power_of_two(-exponent);
  }

  /// ln(2^exponent x) where log1p is that of x times the reciprocal.
  template <bool exact>
  TwoParts<Extended> log_of_whole(const TwoParts<Extended>& log1p, int more_exponent = 0) const {
    constexpr double ln2_hi = 0x1.62E42FEFA39Ep-1;  // 48 bits, as the table's
    constexpr double ln2_lo = 0x1.E6AF278ECE601p-50;
    const double* row = orv_qem_core_logl_table_256[index];
    const double k = exponent + more_exponent;
    const Extended whole = k * Extended{ln2_hi} + row[0], rest = log1p.lo + (k * ln2_lo + row[1]);
    if (!exact) return {whole + log1p.hi, rest};
    const TwoParts<Extended> sum = exact_sum_ordered(whole, log1p.hi);
    return {sum.hi, sum.lo + rest};
  }
};

/// ln(2^exponent x), where x is not near 1 or the exponent is not 0.
template <bool exact>
[[gnu::always_inline]] inline TwoParts<Extended> log_by_table(const Approached& x,
                                                              Extended lower = -0.0L,
                                                              int exponent = 0) {
  const double x_hi = first_32_bits(x.near);
  const LogInterval interval(x.near);
  const double c = interval.reciprocal, first = x_hi * c - 1;
  const Extended second = (x.value - x_hi) * c;
  const TwoParts<Extended> r = exact ? exact_sum_ordered<Extended>(first, second)
                                     : TwoParts<Extended>{first + second, -0.0L};
  const double t = exact ? static_cast<double>(r.hi) : first + (x.near - x_hi) * c;
  const TwoParts<Extended> log1p = log1p_in_parts<exact>({r.hi, t}, r.lo + lower * c);
  return interval.log_of_whole<exact>(log1p, exponent);
}

/// ln x outside a double's range.
template <bool exact>
[[gnu::noinline]] inline TwoParts<Extended> log_far_out(Extended x, Extended lower) {
  int exponent = exponent_field(x) - extended_bias;
  if (exponent == -extended_bias) exponent -= __builtin_clzll(significand_of(x)) - 1;
  return log_by_table<exact>(scaled(x, -exponent), scaled(lower, -exponent), exponent);
}

/// ln x, x positive and finite; `lower` is a second part of x.
template <bool exact = false>
[[gnu::always_inline]] inline TwoParts<Extended> log_in_parts(Extended x, Extended lower = -0.0L) {
  constexpr double below_one = 1 - 0x1p-9, above_one = 1 + 0x1p-8;
  const double near = static_cast<double>(x);
  if (near > below_one && near < above_one) return log1p_in_parts<exact>(x - 1, lower);
  if (near > 0x1p-1000 && near < 0x1p1000) return log_by_table<exact>(x, lower);
  return log_far_out<exact>(x, lower);
}

[[gnu::noinline]] inline Extended log_of(Extended x) {
  if (!(x > 0)) return x == 0 ? -1 / (x * x) : (x - x) / 0.0L;
  if (is_infinite(x)) return x;
  const TwoParts<Extended> log = log_in_parts(x);
  return log.hi + log.lo;
}

[[gnu::always_inline]] inline Extended log1p_of(const Approached& x) {
  constexpr double small = 0x1p-8;
  TwoParts<Extended> log = {x.value, 0};
  if (x.near >= -small && x.near <= small) {
    if (x.near != 0)
      log = log1p_in_parts<false>({x.value, if_less(0x1p-100, absolute(x.near), x.near)});
  } else if (x.near > -0.25 && x.near < 0x1p500) {
    const LogInterval interval(1 + x.near);
    const double c = interval.reciprocal;
    const Extended r = x.value * c + (Extended{c} - 1);
    log = interval.log_of_whole<false>(log1p_in_parts<false>({r, x.near * c + (c - 1)}));
  } else {
    return log_of(1 + x.value);
  }
  return log.hi + log.lo;
}

}  // namespace ORV_TAG
}  // namespace orv
