// e^x of extended numbers.
//
// e^x = 2^n 2^(j/256) e^r: the power of the row comes out of a table in two parts, e^r - 1 from its
// series, of which all but the first term fit a double.
#pragma once

#include <orv/qem.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// e^x as a number between 0.7 and 1.42, and the power of two that it lacks.
struct ExtendedPower {
  Extended value;
  int exponent;
};

/// |x| below 2^14. The second part of x is below an ulp of the first.
[[gnu::always_inline]] inline ExtendedPower exp_in_parts(Extended x, double lower = 0) {
  constexpr double steps = 0x1.71547652B82FEp+8, shifter = 0x1.8p52;  // 256/ln 2
  constexpr double step_hi = 0x1.62E42FEFA38p-9;  // 42 bits, for exact multiples
  constexpr Extended step_lo = 0x1.EF35793C7673007Ep-53L;
  const double shifted = static_cast<double>(x) * steps + shifter, k = shifted - shifter;
  const Extended r = (x - static_cast<Extended>(k) * step_hi) - k * step_lo;
  const double t = static_cast<double>(r);
  const double small = t * t *
                       ((0.5 + t * 0x1.5555555555555p-3) +
                        t * t * (0x1.5555555555555p-5 + t * 0x1.1111111111111p-7));
  const int row = low_word(shifted) + 128;
  const double* power = orv_qem_core_expl_table_256[row & 255];
  const Extended whole = static_cast<Extended>(power[0]) + power[1];
  return {power[0] + (power[1] + whole * (r + (small + lower))), row >> 8};
}

inline Extended exp_of(Extended x) {
  // Beyond lie the infinite and the zero results; NaN comes out of the last line.
  if (x > 11400) return is_infinite(x) ? x : 0x1p16000L * 0x1p16000L;
  if (x < -11600) return is_infinite(x) ? 0 : 0x1p-16000L * 0x1p-16000L;
  if (is_nan(x)) return x + x;
  const ExtendedPower power = exp_in_parts(x);
  return scaled(power.value, power.exponent);
}

/// Both of e^x and e^-x, halved, added and subtracted.
struct HyperbolicPair {
  Extended sinh, cosh;
};

/// sinh x for |x| below 0.3, by its series.
inline Extended sinh_near_zero(Extended x) {
  const Extended square = x * x;
  const double v = static_cast<double>(square);
  const double rest =
      v *
      (0x1.1111111111111p-7 +
       v * (0x1.A01A01A01A01Ap-13 +
            v * (0x1.71DE3A556C734p-19 + v * (0x1.AE64567F544E4p-26 + v * 0x1.6124613A86D09p-33))));
  return x + x * (square * (0xA.AAAAAAAAAAAAAABp-6L + rest));
}

/// |x| below 2^14.
inline HyperbolicPair hyperbolic_pair(Extended x) {
  const Extended a = __builtin_fabsl(x);
  const ExtendedPower power = exp_in_parts(a);
  const Extended half = scaled(power.value, power.exponent - 1), opposite = 0.25L / half;
  const Extended sinh = a < 0.3L ? sinh_near_zero(a) : half - opposite;
  return {__builtin_copysignl(sinh, x), half + opposite};
}

}  // namespace ORV_TAG
}  // namespace orv
