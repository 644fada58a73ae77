// SPDX-License-Identifier: MIT
// The angle of a point, in two parts for those who multiply it.
//
// Next to the point's direction lies a vector (p, q) with a part of 1 and one that is a step of the
// table, signs aside. The angle from there to the point (x, y) is that of (p y - q x)/(p x + q y),
// whose series beyond its first term fits a double.
#pragma once

#include <orv/qem.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Angles count from a start in a direction: from the axis of x, and with y the longer side from
/// that of y; first where x is positive, then where it is negative.
struct Octant {
  double start, start_lo, direction;
};
inline constexpr double pi_hi = 0x1.921FB54442D18p+1, pi_lo = 0x1.1A62633145C07p-53;
inline constexpr Octant octants[4] = {
    {0, 0, 1}, {pi_hi, pi_lo, -1}, {pi_hi / 2, pi_lo / 2, -1}, {pi_hi / 2, pi_lo / 2, 1}};

/// The angle of (x, y), the longer part not near the ends of a double's range. With `exact`, which
/// is for doubles, the second part is good for itself, not just to round the sum.
template <bool exact>
[[gnu::always_inline]] inline TwoParts<Extended> angle_in_range(const Approached& y,
                                                                const Approached& x) {
  constexpr double third = 0x1.5555555555555p-2, fifth = 0x1.999999999999Ap-3,
                   seventh = 0x1.2492492492492p-3, shifter = 0x1.8p45;
  const double a = absolute(x.near), b = absolute(y.near), mirrored = 1 - 2 * sign_of(y.near);
  const double slope = lesser(a, b) / greater(a, b);
  const double shifted = slope + shifter, step = shifted - shifter;
  const double p = __builtin_copysign(if_less(a, b, step, 1), x.near);
  const double q = if_less(a, b, 1, step);
  const Octant& octant = octants[2 * (a < b) + sign_of(x.near)];
  const double* row = orv_qem_core_atanl_table_128[low_word(shifted)];
  const TwoParts<double> start = exact_sum_ordered(octant.start, octant.direction * row[0]);
  const double start_lo = start.lo + (octant.start_lo + octant.direction * row[1]);

  const Extended above = absolute(y.value), along = x.value * p, across = above * q;
  const Extended run = along + across, rise = above * p - x.value * q, t = rise / run;
  // What is small needs no more than the bits of t that the same in doubles has, and nothing where
  // its powers would underflow.
  const double near = (b * p - x.near * q) / (x.near * p + b * q);
  const double u = if_less(0x1p-100, slope, exact ? static_cast<double>(t) : near), v = u * u;
  const double rest = start_lo + u * v * (v * (fifth - v * seventh) - third);
  const double hi = mirrored * start.hi;
  if (!exact) return {hi, mirrored * t + mirrored * rest};
  // Both rise and run are sums of exact products, and the first is one that is exact itself.
  const TwoParts<Extended> product = exact_product(Halves(t), Halves(run));
  const Extended missing = ((rise - product.hi) - product.lo) - t * exact_sum(along, across).lo;
  const TwoParts<Extended> sum = exact_sum_ordered(Extended{hi}, mirrored * t);
  return {sum.hi, sum.lo + mirrored * (rest + missing / run)};
}

/// The same at those ends.
template <bool exact>
[[gnu::noinline]] inline TwoParts<Extended> angle_at_ends(Extended y, Extended x) {
  const auto with_size = [](Extended size, Extended z) { return __builtin_copysignl(size, z); };
  if (is_infinite(y) || is_infinite(x)) {
    const int up = is_infinite(y), aside = is_infinite(x);
    y = with_size(up, y), x = with_size(aside, x);
  }
  if (x == 0 && y == 0) x = with_size(1, x);
  const int size_x = exponent_field(x), size_y = exponent_field(y);
  const int size = extended_bias - (size_x > size_y ? size_x : size_y);
  return angle_in_range<exact>(Approached(scaled(y, size)), Approached(scaled(x, size)));
}

/// The angle of (x, y), neither part being NaN.
template <bool exact = false>
[[gnu::always_inline]] inline TwoParts<Extended> atan2_in_parts(const Approached& y,
                                                                const Approached& x) {
  const double longer = greater(absolute(x.near), absolute(y.near));
  const bool in_range = longer < 0x1p500 && longer > 0x1p-500;
  return __builtin_expect(in_range, true) ? angle_in_range<exact>(y, x)
                                          : angle_at_ends<exact>(y.value, x.value);
}

[[gnu::always_inline]] inline Extended angle_of(const Approached& y, const Approached& x) {
  const TwoParts<Extended> angle = atan2_in_parts(y, x);
  return angle.hi + angle.lo;
}

inline Extended atan2_of(Extended y, Extended x) {
  if (is_nan(x) || is_nan(y)) return x + y;
  return angle_of(y, x);
}

}  // namespace ORV_TAG
}  // namespace orv
