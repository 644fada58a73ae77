// SPDX-License-Identifier: MIT
// e^x of extended numbers.
//
// e^x = 2^n 2^(j/256) e^r: the power of the row comes out of a table in two parts, e^r - 1 from its
// series, of which all but the first term fit a double.
#pragma once

#include <orv/qem.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// 2^exponent e^x, which is below any limit of extended numbers. The second part of x is below an
/// ulp of the first.
[[gnu::always_inline]] inline Extended exp_in_parts(double x, double lower = -0.0,
                                                    int exponent = 0) {
  constexpr double steps = 0x1.71547652B82FEp+8, shifter = 0x1.8p52;  // 256/ln 2
  constexpr double step_hi = 0x1.62E42FE8p-9;  // 30 bits, for exact multiples
  constexpr double step_lo = 0x1.E8E7BCD5E4F1Ep-39;
  const double shifted = x * steps + shifter, k = shifted - shifter;
  const double near = x - k * step_hi, rest = k * step_lo, t = (near - rest) + lower;
  const double small = t * t *
                       ((0.5 + t * 0x1.5555555555555p-3) +
                        t * t * (0x1.5555555555555p-5 + t * 0x1.1111111111111p-7));
  const int row = low_word(shifted) + 128, n = (row >> 8) + exponent;
  const bool moderate = -900 <= n && n <= 900;
  const double scale = double_power_of_two(moderate ? n : 0);
  const double* power = orv_qem_core_expl_table_256[row & 255];
  const double hi = power[0] * scale, lo = power[1] * scale;
  const Extended e_less_one = (Extended{near} - rest) + (small + lower);
  const Extended e = hi + (lo * (1 + (t + small)) + hi * e_less_one);
  return __builtin_expect(moderate, true) ? e : scaled(e, n);
}

[[gnu::always_inline]] inline Extended exp_in_parts(const TwoParts<Extended>& x) {
  const double near = static_cast<double>(x.hi);
  return exp_in_parts(near, static_cast<double>((x.hi - near) + x.lo));
}

inline Extended exp_of(Extended x) {
  // Beyond lie the infinite and the zero results; NaN comes out of the last line.
  if (x > 11400) return is_infinite(x) ? x : 0x1p16000L * 0x1p16000L;
  if (x < -11600) return is_infinite(x) ? 0 : 0x1p-16000L * 0x1p-16000L;
  if (is_nan(x)) return x + x;
  return exp_in_parts({x, -0.0L});
}

struct HyperbolicPair {
  Extended sinh, cosh;
};

/// sinh x for |x| below 0.3, by its series.
template <class R>
[[gnu::always_inline]] inline Extended sinh_near_zero(R x) {
  constexpr double sixth = 0x1.5555555555555p-3, sixth_lo = 0x1.5555555555555p-57;
  const double t = static_cast<double>(x), v = t * t;
  const double rest =
      v *
      (0x1.1111111111111p-7 +
       v * (0x1.A01A01A01A01Ap-13 +
            v * (0x1.71DE3A556C734p-19 + v * (0x1.AE64567F544E4p-26 + v * 0x1.6124613A86D09p-33))));
  const Extended factor = sixth + Extended{sixth_lo + rest};
  return x + x * (Extended{x} * x * factor);
}

/// Both of e^x and e^-x, halved, added and subtracted. |x| as above.
template <class R>
[[gnu::always_inline]] inline HyperbolicPair hyperbolic_pair(R x) {
  const R a = absolute(x);
  const double near = static_cast<double>(a), lower = static_cast<double>(a - near);
  const Extended half = exp_in_parts(near, lower, -1), opposite = 0.25L / half;
  const Extended sinh = a < R{0.3} ? sinh_near_zero(a) : half - opposite;
  return {sinh * (1 - 2 * sign_of(x)), half + opposite};
}

}  // namespace ORV_TAG
}  // namespace orv
