// SPDX-License-Identifier: MIT
// What the kernels of an angle in doubles share: the reduction of any finite angle in the lanes,
// and what becomes of the others.
#pragma once

#include "../../frame/guarded.hpp"
#include "../../simd/exact.hpp"
#include "dsincos.hpp"
#include "tables/vdfar_table.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Less the nearest multiple of a turn, 512 steps, or of two turns.
template <class V>
V without_turns(V z) {
  constexpr double turns = 0x1.8p61;
  return z - ((z + turns) - turns);
}

/// Angles from 2^16 to the largest number (M. Payne and R. Hanek, 1983): the significand times
/// those bits of 256/pi that matter for its exponent, in pieces of 26 bits, whose products with
/// half a significand are exact. Bits further up make whole turns. Bits further down do not matter:
/// no double comes closer to a multiple of pi/2 than 2^-55 steps, and what is left out is below
/// 2^-119.
template <class V>
ReducedAngle<V> reduce_far(V a) {
  constexpr double shifter = Format<double>::shifter;
  // An exponent field of 1025 + 26 i and up to 25 more has row i, which is two entries.
  const V row = ((exponent_field(a) - 1037.5) * (1 / 26.0) + shifter) - shifter;
  const Indices<V> index(row + row + shifter);
  V p[4], q[4];
  lookup(vdfar_table, index, p);
  lookup(vdfar_table + 1, index, q);
  const V x = a * 0x1p-256;  // the pieces are as much too large
  const V hi = upper_half(x), lo = x - hi;

  // Exact: the terms are below 2^9 and have units of at least 2^-43.
  const V upper = (without_turns(lo * p[0]) + without_turns(hi * p[1])) +
                  (without_turns(lo * p[1]) + without_turns(hi * p[2]));
  // Below 2^11, and below 2^-15.
  const TwoParts<V> middle = exact_sum(lo * p[2], hi * p[3]);
  const TwoParts<V> lower = exact_sum(lo * p[3], hi * q[0]);
  const V lowest = (lo * q[0] + hi * q[1]) + (lo * q[1] + hi * q[2]) + (lo * q[2] + hi * q[3]);

  const V k = (upper + middle.hi) + shifter;
  const TwoParts<V> s = exact_sum(upper - (k - shifter), middle.hi);
  const TwoParts<V> t = exact_sum(s.hi, lower.hi);
  const TwoParts<V> u = exact_sum(t.hi, (middle.lo + s.lo) + (lower.lo + t.lo));
  const TwoParts<V> steps = exact_sum(u.hi, u.lo + lowest);

  constexpr double step = 0x1.921FB54442D18p-7, step_lo = 0x1.1A62633145C07p-61;  // pi/256
  const TwoParts<V> r = exact_product(Halves<V>(steps.hi), Halves<V>(splat<V>(step)));
  const V rl = r.lo + (steps.hi * step_lo + steps.lo * step);
  const TwoParts<V> angle = exact_sum_ordered(r.hi, rl);
  return {k, angle.hi, angle.lo};
}

/// Puts the angles of the lanes under `far`. Returns the mask of those that are infinite or NaN.
template <class V>
[[gnu::noinline]] int put_far_angles(V x, V far, ReducedAngle<V>& angle) {
  constexpr double shifter = Format<double>::shifter;
  const V sign = and_bits(x, bits_of(-0.0)), a = exclusive(x, sign);
  const V finite = both(far, greater(splat<V>(Format<double>::infinity), a));
  const ReducedAngle<V> reduced = reduce_far(select(finite, a, splat<V>(0x1p30)));
  angle.k = select(finite, exclusive(reduced.k - shifter, sign) + shifter, angle.k);
  angle.r = select(finite, exclusive(reduced.r, sign), angle.r);
  angle.rl = select(finite, exclusive(reduced.rl, sign), angle.rl);
  return mask_of(far) & ~mask_of(finite);
}

/// A pass of a kernel on angles: f(angle, k) makes the results of vector k.
template <Level level, class V, size_t vectors, class F>
int pass_of_angles(const V (&x)[vectors], F f) {
  return by_vector<V, vectors>([&](int k) {
    ReducedAngle<V> angle = reduce_near<level>(x[k]);
    const V limit = splat<V>(vdsincos_data<level>::limit);
    const V far = compare<_CMP_NLE_UQ>(and_bits(x[k], ~bits_of(-0.0)), limit);
    int rare = 0;
    if (__builtin_expect(mask_of(far) != 0, false)) rare = put_far_angles(x[k], far, angle);
    f(angle, k);
    return rare;
  });
}

/// No angle at all: an infinity or a NaN.
inline int not_an_angle(double x, double* y) {
  const bool infinite = __builtin_isinf(x);
  *y = infinite ? x * 0.0 : x * x;
  return infinite ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
