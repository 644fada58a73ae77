// The angle of a point, in two parts for those who multiply it.
//
// Of a triangle with sides y <= x the angle is that of c, the table's step nearest to y/x, and that
// of (y - c x)/(x + c y), whose series beyond its first term fits a double.
#pragma once

#include <orv/qem.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// atan(y/x) for 0 <= y <= x, neither near the ends of a double's range. With `exact` the second
/// part is good for itself, not just to round the sum.
template <bool exact>
[[gnu::always_inline]] inline TwoParts<Extended> atan_of_slope(Extended y, Extended x) {
  constexpr double third = 0x1.5555555555555p-2, fifth = 0x1.999999999999Ap-3,
                   seventh = 0x1.2492492492492p-3;
  const double slope = static_cast<double>(y) / static_cast<double>(x);
  const auto step = static_cast<int>(slope * 128 + 0.5);
  const double c = step * 0x1p-7;
  Extended rise = y - c * x;
  if (exact) {
    const Halves<Extended> half(x);
    rise = (y - c * half.hi) - c * half.lo;
  }
  const Extended run = x + c * y, t = rise / run;
  const double u = static_cast<double>(t), v = u * u;
  Extended rest = t * (v * (v * (fifth - v * seventh) - third));
  if (exact) {
    const TwoParts<Extended> product = exact_product(Halves(t), Halves(run));
    const Extended run_lower = (x - run) + c * y;
    rest += (((rise - product.hi) - product.lo) - t * run_lower) / run;
  }
  const double* row = orv_qem_core_atanl_table_128[step];
  const TwoParts<Extended> sum = exact_sum_ordered<Extended>(row[0], t);
  return {sum.hi, sum.lo + (rest + row[1])};
}

/// The same for any sides, which the complex functions seldom have.
[[gnu::noinline]] inline TwoParts<Extended> atan_near_ends(Extended y, Extended x) {
  if (is_infinite(y)) return {extended_pi.hi / 4, extended_pi.lo / 4};
  if (is_infinite(x) || y == 0) return {0, 0};
  const int size = exponent_field(x) - extended_bias;
  return atan_of_slope<true>(scaled(y, -size), scaled(x, -size));
}

/// Angles count from a start in a direction: from the axis of x, and with y the longer side from
/// that of y; first where x is positive, then where it is negative.
struct Octant {
  double start, start_lo, direction;
};
inline constexpr double pi_hi = 0x1.921FB54442D18p+1, pi_lo = 0x1.1A62633145C07p-53;
inline constexpr Octant octants[4] = {
    {0, 0, 1}, {pi_hi, pi_lo, -1}, {pi_hi / 2, pi_lo / 2, -1}, {pi_hi / 2, pi_lo / 2, 1}};

/// The angle of (x, y), neither part being NaN.
template <bool exact = false>
[[gnu::always_inline]] inline TwoParts<Extended> atan2_in_parts(Extended y, Extended x) {
  const Extended a = __builtin_fabsl(x), b = __builtin_fabsl(y);
  const bool steep = b > a;
  Extended longer = steep ? b : a, shorter = steep ? a : b;
  TwoParts<Extended> angle = {0, 0};
  if (__builtin_expect(longer < 0x1p500L && longer > 0x1p-500L, true)) {
    angle = atan_of_slope<exact>(shorter, longer);
  } else {
    angle = atan_near_ends(shorter, longer);
  }
  const Octant& octant = octants[2 * steep + sign_of(x)];
  const double mirrored = 1 - 2 * sign_of(y);
  const TwoParts<Extended> sum =
      exact_sum_ordered<Extended>(octant.start, octant.direction * angle.hi);
  const Extended lower = sum.lo + (octant.start_lo + octant.direction * angle.lo);
  return {mirrored * sum.hi, mirrored * lower};
}

inline Extended atan2_of(Extended y, Extended x) {
  if (is_nan(x) || is_nan(y)) return x + y;
  const TwoParts<Extended> angle = atan2_in_parts(y, x);
  return angle.hi + angle.lo;
}

}  // namespace ORV_TAG
}  // namespace orv
