// SPDX-License-Identifier: MIT
// Exp: e^x.
//
// x = (2^s m + j) ln2/2^s + r, e^x = 2^m * 2^(j/2^s) * e^r: a table for the middle factor, a
// polynomial for the last. HA has the table in two parts; LA and EP have it divided by the constant
// term of a polynomial whose leading coefficient is 1, which saves a multiplication. EP takes r as
// a fraction of a step and so needs no ln2.
//
// A level's record of constants:
//   T, step_bits        float or double; s
//   rare_above          greatest high word (float: bit pattern) of |x| for the lanes
//   per_step            2^s/ln2
//   step_hi, step_lo    ln2/2^s; a whole number of steps times the first is exact
//   table, polynomial
#pragma once

#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "../simd/format.hpp"
#include "../simd/lookup.hpp"
#include "../simd/polynomial.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class D, Level level, class V>
V exp_lane(V x) {
  using F = Format<Lane<V>>;
  constexpr typename F::Bits step_mask = (1u << D::step_bits) - 1;
  const V v = x * D::per_step;
  const V k = v + F::shifter;
  const V n = k - F::shifter;
  const Indices<V> j(and_bits(k, step_mask));
  const auto m = shift_left<V, F::fraction_bits - D::step_bits>(bits_of(and_bits(k, ~step_mask)));

  if constexpr (level == Level::EP) {
    const V p = monic(D::polynomial, v - n);
    return as_vector<V>(add<V>(bits_of(lookup(D::table, j, V{})), m)) * p;
  } else {
    const V r = (x - n * D::step_hi) - n * D::step_lo;
    if constexpr (level == Level::LA) {
      const V p = monic(D::polynomial, r);
      return as_vector<V>(add<V>(bits_of(lookup(D::table, j, V{})), m)) * p;
    } else {
      const V e = horner(D::polynomial, r) * (r * r) + r;  // e^r - 1
      V t_hi, t_lo;
      lookup(D::table, j, t_hi, t_lo);
      const V y = t_hi * e + t_lo + t_hi;
      return as_vector<V>(add<V>(bits_of(y), m));
    }
  }
}

/// 2^p, for p of the exponents of normal doubles.
inline double power_of_two(int p) { return from_bits(static_cast<uint64_t>(p + 1023) << 52); }

/// (hi + lo) 2^m, rounded once also where it is denormal: hi from 1 to 2, lo below 2^-6, m from
/// -1082 to 1025.
inline double scaled_sum(double hi, double lo, int m) {
  const double y = lo + hi;
  if (m > 1023) return y * power_of_two(1023) * power_of_two(m - 1023);
  if (m > -1022 || (m == -1022 && y >= 1)) return y * power_of_two(m);
  // Computed 2^60 too large, then brought down so that only the last step rounds.
  constexpr double down = 0x1p-60;
  const double scale = power_of_two(m + 60);
  const double h = lo * scale, l = hi * scale, s = h + l;
  if (m <= -1033) return s * down;  // few bits remain: rounding s does no harm
  const double spread = s * 0x1.8p32;
  const double upper = (s + spread) - spread;  // short enough to be exact when denormal
  const double rest = (s - upper) + ((l - s) + h);
  return upper * down + rest * down;
}

}  // namespace ORV_TAG
}  // namespace orv
