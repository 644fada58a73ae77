// SPDX-License-Identifier: MIT
// dTan: the tangent of doubles.
//
// With sine S and cosine C of the angle's row and t = tan(r), the tangent is (S + C t)/(C - S t):
// one polynomial, and a denominator as accurate near a pole as the numerator is near a zero.
#pragma once

#include "../_heap/real/dangle.hpp"
#include "tables/vdtan_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

/// LA and EP, with a polynomial for (tan(r)/r - 1)/r^2.
template <class V, class C>
V tangent_of_angle(const ReducedAngle<V>& angle, const C& polynomial) {
  const V r = angle.r, v = r * r, t = r + r * v * horner(polynomial, v);
  V sine, cosine;
  lookup(vdsincos_pairs, Indices<V>(and_bits(angle.k, vdsincos_turn - 1)), sine, cosine);
  return (sine + cosine * t) / (cosine - sine * t);
}

/// HA: numerator and denominator are n - n_less and d - d_less, and the remainder of their quotient
/// corrects it.
template <class V>
V accurate_tangent_of_angle(const ReducedAngle<V>& angle) {
  const V r = angle.r, v = r * r, t = upper_half(r);
  const V t_rest = r * v * horner(vdtan_tangent, v) + ((r - t) + angle.rl);
  V row[4];
  lookup(vdsincos_table, Indices<V>(and_bits(angle.k, vdsincos_turn - 1)), row);
  const V &S = row[0], &S_rest = row[1], &C = row[2], &C_rest = row[3];

  const V Ct = C * t, n = S + Ct;
  const V n_less = ((n - S) - Ct) - (S_rest + (C_rest * t + (C + C_rest) * t_rest));
  const V St = S * t, d = C - St;
  const V d_less = ((d - C) + St) - (C_rest - (S_rest * t + (S + S_rest) * t_rest));

  const V reciprocal = 1.0 / (d - d_less), q = n * reciprocal;
  const V q_half = upper_half(q), d_half = upper_half(d), d_rest = (d - d_half) - d_less;
  const V remainder =
      ((q_half * d_half - n) + (q - q_half) * d_half) + (q * d_rest + n_less);  // of q d - n
  return q - remainder * reciprocal;
}

template <Level level>
struct DTan {
  using T = double;
  static constexpr int block = 4;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdTan";
  static constexpr Environment environment = environment_mode;

  template <class V, size_t vectors>
  static int pass(const V (&x)[1][vectors], V (&y)[1][vectors]) {
    return pass_of_angles<level>(x[0], [&](const ReducedAngle<V>& angle, int k) {
      if constexpr (level == Level::HA) {
        y[0][k] = accurate_tangent_of_angle(angle);
      } else if constexpr (level == Level::LA) {
        y[0][k] = tangent_of_angle(angle, vdtan_tangent);
      } else {
        y[0][k] = tangent_of_angle(angle, vdtan_ep_tangent);
      }
    });
  }

  static int slow(const double* x, double* y) { return not_an_angle(*x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
