// SPDX-License-Identifier: MIT
// What Cosh and Sinh share: the sum and the difference of both exponentials at HA, their limits,
// and the slow path.
#pragma once

#include "../../exp/dexp.hpp"
#include "tables/vdcosh_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

enum class Hyperbolic { Cosine, Sine };

/// cosh v or sinh v of v >= 0, the latter from 1/4 on.
///
/// v = (64 m + j) ln2/64 + r; up = 2^(m - 1) 2^(j/64), down = 2^(-m - 1) 2^(-j/64), in two parts.
/// Then
///
///   cosh v = (up + down) cosh r + (up - down) sinh r
///   sinh v = (up - down) cosh r + (up + down) sinh r
///
/// where all but the first bracket is small beside it.
template <Hyperbolic function, class V>
V hyperbolic_in_parts(V v) {
  using F = Format<double>;
  using D = vdexp_data<Level::HA>;
  constexpr uint64_t step_mask = (1u << D::step_bits) - 1;
  // The exponent's bias joined to the steps: the bits above them are the exponent of up.
  constexpr double shifter = F::shifter + ((F::bias - 1) << D::step_bits);
  const V k = v * D::per_step + shifter, n = k - shifter;
  const V r = (v - n * D::step_hi) - n * D::step_lo;
  const Indices<V> j(and_bits(k, step_mask));
  const V power = as_vector<V>(
      shift_left<V, F::fraction_bits - D::step_bits>(bits_of(and_bits(k, ~step_mask))));
  // All exponent bits turned over: 2/power. Where down no longer counts it is kept from vanishing.
  const V other = maximum(exclusive(power, splat<V>(F::infinity)), splat<V>(0x1p-60));

  V t[4];
  lookup(vdcosh_table, j, t);
  const V sign = splat<V>(function == Hyperbolic::Sine ? -1 : 1);
  const V up = t[0] * power, down = t[2] * other * sign;
  const V rest = t[1] * power + t[3] * other * sign;
  const V sum = up + down, r2 = r * r;
  const V sinh_r = r + r * r2 * horner(vdcosh_odd, r2);
  const V lost = (up - sum) + down;
  return sum + (sum * (r2 * horner(vdcosh_even, r2)) + (up - down) * sinh_r + (lost + rest));
}

template <class T>
struct HyperbolicLimits;
template <>
struct HyperbolicLimits<double> {
  static constexpr double lanes = 708;  // where e^-x is still a normal number
  static constexpr double finite = 0x1.633CE8FB9F87Dp9;
};
template <>
struct HyperbolicLimits<float> {
  static constexpr float lanes = 87;
  static constexpr float finite = 0x1.65A9F8p6f;
};

template <class T, class V>
int hyperbolic_rare(V x) {
  return high_word_above(x, Format<Lane<V>>::high_word(HyperbolicLimits<T>::lanes));
}

/// NaN, infinity, overflow, and what comes so near to it that only e^|x|/2 is left.
template <Hyperbolic function, class T>
int hyperbolic_cout_rare(const T* px, T* py) {
  const T x = *px, v = __builtin_fabs(x);
  const T sign = function == Hyperbolic::Sine ? __builtin_copysign(T{1}, x) : T{1};
  if (!(v < Format<T>::infinity)) {
    *py = v * sign;
    return QEM_STATUS_OK;
  }
  if (v > HyperbolicLimits<T>::finite) {
    const T largest = opaque(Format<T>::largest);
    *py = largest * largest * sign;
    return QEM_STATUS_OVERFLOW;
  }
  *py = static_cast<T>(exp_times_power(v, -1)) * sign;
  return QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
