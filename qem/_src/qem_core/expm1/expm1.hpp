// SPDX-License-Identifier: MIT
// Expm1: e^x - 1, accurate near 0.
//
// With the steps of Exp, e^x = T e^r and e^x - 1 = (T - 1) + T (e^r - 1). The table's first part is
// so short that T - 1 and its product with r's upper half are exact; what those leave is summed
// apart and added last.
//
// A record of constants:
//   T, step_bits        float or double; the table has 2^step_bits entries
//   limit               greatest |x| for the lanes
//   floor               from here down the result is -1; going further would underflow
//   per_step            2^step_bits/ln2
//   step_hi, step_lo    ln2/2^step_bits; a whole number of steps times the first is exact
//   table               2^(j/2^step_bits) as a short upper and a full lower part
//   upper_half          mask of r's upper half
//   series, ep_series   (e^r - 1 - r)/r^2
#pragma once

#include "../exp/dexp.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Adding it leaves the nearest integer in a sum's low bits, with the exponent's bias joined to the
/// steps, so that those bits shifted up are the power of two itself.
template <class D>
constexpr typename D::T biased_shifter() {
  using F = Format<typename D::T>;
  return F::shifter + (F::bias << D::step_bits);
}

template <class D, Level level, class V>
V expm1_lane(V argument) {
  using T = Lane<V>;
  using F = Format<T>;
  constexpr typename F::Bits step_mask = (1u << D::step_bits) - 1;
  const V x = maximum(number_or_zero(argument), splat<V>(D::floor));
  const V k = x * D::per_step + biased_shifter<D>();
  const V n = k - biased_shifter<D>();
  const Indices<V> j(and_bits(k, step_mask));
  const V power = as_vector<V>(
      shift_left<V, F::fraction_bits - D::step_bits>(bits_of(and_bits(k, ~step_mask))));
  V upper, lower;
  lookup(D::table, j, upper, lower);
  const V t_hi = upper * power, t_lo = lower * power;

  const V a = x - n * D::step_hi;  // exact
  const V b = n * D::step_lo;
  const V r = a - b;
  const V r2 = r * r;
  const V base = t_hi - T{1};
  V y;
  if constexpr (level == Level::HA) {
    const V r_hi = and_bits(r, D::upper_half);
    const V r_lo = (r - r_hi) + ((a - r) - b);
    const V product = t_hi * r_hi;  // exact
    const V s = base + product;
    const V t_of_base = base + T{1};  // T may be the smaller or the greater of the two
    const V lost = ((t_hi - t_of_base) - (T{1} - (t_of_base - base))) + (product - (s - base));
    const V p = horner(D::series, r) * r2 + r_lo;
    y = ((lost + (t_lo + t_lo * (r_hi + p))) + t_hi * p) + s;
  } else {
    V p;
    if constexpr (level == Level::LA) p = horner(D::series, r) * r2 + r;
    if constexpr (level == Level::EP) p = horner(D::ep_series, r) * r2 + r;
    y = ((t_hi + t_lo) * p + t_lo) + base;
  }
  return either(y, and_bits(argument, bits_of(-T{0})));  // the sign of zero
}

/// Lanes beyond the limit, NaN, and denormals, whose result is reported as one.
template <class D, class V>
int expm1_rare(V x) {
  using T = Lane<V>;
  const V absolute = and_bits(x, ~bits_of(-T{0}));
  return outside(absolute, Format<T>::smallest_normal, D::limit) & ~mask_of(equal(x, V{}));
}

/// Sums that are nothing but one of their terms, and the exponential itself.
template <class T, class Slow>
int expm1_cout_rare(T x, T& y, Slow exp_slow) {
  constexpr T down = sizeof(T) == 8 ? T(0x1p-60) : T(0x1p-30);
  if (x > T{1} || x != x) return exp_slow(&x, &y);
  if (x < T{-1}) {
    y = opaque(down) - T{1};  // rounds to -1 inexactly
    if (bits_of(x) == bits_of(-static_cast<T>(__builtin_inff()))) y = T{-1};
    return QEM_STATUS_OK;
  }
  y = x;
  const bool tiny = x != 0 && __builtin_fabs(x) < Format<T>::smallest_normal;
  return tiny ? QEM_STATUS_UNDERFLOW : QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
