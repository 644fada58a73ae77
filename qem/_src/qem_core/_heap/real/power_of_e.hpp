// SPDX-License-Identifier: MIT
// Hyperbolic functions from one exponential and a quotient: LA and EP, and HA of floats, which has
// lanes of double.
#pragma once

#include "../../exp/dexp.hpp"
#include "tables/exp_less_1.hpp"

namespace orv {
inline namespace ORV_TAG {

/// (e^r - 1 - r)/r^2 for elements T.
template <class T, Level level>
inline constexpr const auto& exp_less_1 = vdexp_less_1_la;
template <>
inline constexpr const auto& exp_less_1<double, Level::EP> = vdexp_less_1_ep;
template <>
inline constexpr const auto& exp_less_1<float, Level::HA> = vsexp_less_1_ha;
template <>
inline constexpr const auto& exp_less_1<float, Level::LA> = vsexp_less_1_la;
template <>
inline constexpr const auto& exp_less_1<float, Level::EP> = vsexp_less_1_ep;

/// e^v as a main part, which may be 1, and an excess over it.
template <class V>
struct PowerOfE {
  V main, excess;

  V whole() const { return main + excess; }
  V less_1() const { return (main - 1) + excess; }
};

/// Of 0 <= v: up to 709 by steps of ln2/64 and a table, in parts where small v need relative
/// accuracy; up to 88 in float, by steps of ln2 without a table.
template <class T, Level level, bool in_parts, class V>
PowerOfE<V> power_of_e(V v) {
  using F = Format<Lane<V>>;
  constexpr const auto& series = exp_less_1<T, level>;
  if constexpr (wide_lanes<V>) {
    using D = vdexp_data<Level::HA>;
    constexpr uint64_t step_mask = (1u << D::step_bits) - 1;
    // The bias joined to the steps: the bits above them are the exponent of the power of 2.
    constexpr double shifter = F::shifter + (F::bias << D::step_bits);
    const V k = v * D::per_step + shifter, n = k - shifter;
    const V a = v - n * D::step_hi, b = n * D::step_lo, r = a - b;
    const Indices<V> j(and_bits(k, step_mask));
    const V power = as_vector<V>(
        shift_left<V, F::fraction_bits - D::step_bits>(bits_of(and_bits(k, ~step_mask))));
    V t_hi, t_lo;
    lookup(D::table, j, t_hi, t_lo);
    const V main = t_hi * power, excess = main * (r + r * r * by_pairs(series, r));
    if constexpr (!in_parts) return {main, excess};
    return {main, excess + (t_lo * power + ((a - r) - b))};
  } else {
    constexpr float per_ln2 = 0x1.715476p0f, ln2_hi = 0x1.62E4p-1f, ln2_lo = 0x1.7F7D1Cp-20f;
    constexpr float shifter = F::shifter + F::bias;
    const V k = v * per_ln2 + shifter, n = k - shifter;
    const V r = (v - n * ln2_hi) - n * ln2_lo;
    const V power = as_vector<V>(shift_left<V, F::fraction_bits>(bits_of(k)));
    return {power, power * (r + r * r * by_pairs(series, r))};
  }
}

/// Of 0 <= v, up to HyperbolicLimits<T>::lanes.
template <class T, Level level, class V>
V cosh_by_quotient(V v) {
  const V y = power_of_e<T, level, false>(v).whole();
  return 0.5f * (y + 1 / y);
}
template <class T, Level level, class V>
V sinh_by_quotient(V v) {
  const V y = power_of_e<T, level, level != Level::HA>(v).less_1();
  return 0.5f * (y + y / (y + 1));
}
template <class T, Level level, class V>
V tanh_by_quotient(V v) {
  const V y = power_of_e<T, level, false>(v + v).less_1();
  return y / (y + 2);
}

}  // namespace ORV_TAG
}  // namespace orv
