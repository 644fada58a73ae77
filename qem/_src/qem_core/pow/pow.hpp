// SPDX-License-Identifier: MIT
// Pow: x^y = 2^(y log2 x), in lanes of double.
//
// x = 2^E m with m from 0.75 to 1.5, and a table with a row for the m's around each of its centers:
// R, about unit/center, so that m R = unit + r with a small r, and log2(unit/R). Then log2 x = E +
// log2(unit/R) + log2(1 + r/unit), a polynomial. The row of 1 is R = unit and 0, so the result
// keeps its relative accuracy where x is close to 1 and y is huge.
//
// y log2 x = k + j/128 + f, x^y = 2^k * 2^(j/128) * 2^f: a table for the middle factor, a
// polynomial for the last.
//
// A block's time is that of its longest chain of operations, so polynomials are in pairs.
#pragma once

#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "../simd/exact.hpp"
#include "../simd/format.hpp"
#include "../simd/lookup.hpp"
#include "../simd/polynomial.hpp"
#include "tables/vdpow_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The upper 26 bits: products of two such halves are exact.
template <class V>
V upper_half(V x) {
  return and_bits(x, 0xFFFFFFFFF8000000);
}

/// The number that exponent bits, counted from those of 1 on, stand for.
template <class V>
V exponent_number(V bits) {
  constexpr double base = 0x1.8p20;  // its high word counts units
  const auto shift = [](__m128i i) { return _mm_srai_epi32(i, 20); };
  const Int<V> units = by_halves(shift, bits_of(bits));
  return as_vector<V>(add<V>(units, bits_of(splat<V>(base)))) - base;
}

/// x = 2^exponent m of positive normal numbers, and m's row of 2^row_bits.
template <class V, int row_bits>
struct Reduced {
  V exponent, m;
  TwiceIndices<V> row;

  explicit Reduced(V x) : Reduced(x, subtract<V>(bits_of(x), bits_of(splat<V>(lowest)))) {}

 private:
  /// 0.75 less half a row.
  static constexpr double lowest =
      __builtin_bit_cast(double, 0x3FE8000000000000 - (1ull << (51 - row_bits)));

  Reduced(V x, Int<V> above)
      : Reduced(x, above, and_bits(as_vector<V>(above), 0xFFF0000000000000)) {}
  Reduced(V x, Int<V> above, V exponent_bits)
      : exponent(exponent_number(exponent_bits)),
        m(as_vector<V>(subtract<V>(bits_of(x), bits_of(exponent_bits)))),
        row(and_bits(as_vector<V>(shift_right_logical<V, 51 - row_bits>(above)),
                     uint64_t{2} * ((1 << row_bits) - 1))) {}
};

/// log2 x, its first part of 26 bits: at HA to 2^-67 of it, at LA to 2^-62.
///
/// m is cut so that r's first part is exact and its square short; at HA r^2's coefficient is cut
/// likewise, and the greatest part of that term is exact.
template <Level level, class V>
TwoParts<V> log2_parts(V x) {
  const Reduced<V, 10> reduced(x);
  const V R = lookup(vdpow_reciprocals, reduced.row, V{});
  V log_hi, log_lo;
  lookup(vdpow_logs, reduced.row, log_hi, log_lo);

  constexpr double shifter = 0x1.8p38;  // leaves 14 bits behind the point
  const V m_hi = (reduced.m + shifter) - shifter;
  const V r_hi = m_hi * R - vdpow_unit, r_lo = (reduced.m - m_hi) * R;  // exact
  const V r = r_hi + r_lo;
  const V whole = reduced.exponent + log_hi;  // exact
  if constexpr (level == Level::HA) {
    const V square = r_hi * r_hi * vdpow_square;  // exact
    const V square_lo = (r_hi + r) * r_lo * vdpow_square;
    const V rest = by_pairs(vdpow_ha_log, r) * r + (log_lo + square_lo);
    const V head = upper_half(whole + (r + square));
    return {head, ((((whole - head) + r_hi) + r_lo) + square) + rest};
  } else {
    const V rest = by_pairs(vdpow_la_log, r) * r + log_lo;
    const V head = upper_half(whole + r);
    return {head, (((whole - head) + r_hi) + r_lo) + rest};
  }
}

/// log2 x to 2^-40 of it.
template <class V>
V short_log2(V x) {
  const Reduced<V, 8> reduced(x);
  V R, log;
  lookup(vdpow_ep_rows, reduced.row, R, log);
  const V r = reduced.m * R - 1.0;
  return (reduced.exponent + log) + by_pairs(vdpow_ep_log, r) * r;
}

/// A level's arithmetic, and (2^f - 1)/f.
template <Level>
struct vdpow_data;
template <>
struct vdpow_data<Level::HA> {
  static constexpr Level level = Level::HA;
  static constexpr const auto& exp = vdpow_ha_exp;
};
template <>
struct vdpow_data<Level::LA> {
  static constexpr Level level = Level::LA;
  static constexpr const auto& exp = vdpow_ha_exp;
};
template <>
struct vdpow_data<Level::EP> {
  static constexpr Level level = Level::EP;
  static constexpr const auto& exp = vdpow_ep_exp;
};

/// Steps of the powers' table.
inline constexpr int step_bits = 7;
inline constexpr uint64_t step_mask = (1 << step_bits) - 1;
inline constexpr double step_shifter = Format<double>::shifter / (1 << step_bits);

/// 2^(k + f) where that is normal; the low bits of k, which has the shifter in it, count steps.
template <class D, class V>
V exp2_lane(V k, V f) {
  const Indices<V> j(and_bits(k, step_mask));
  const auto exponent = shift_left<V, 52 - step_bits>(bits_of(and_bits(k, ~step_mask)));
  const V p = by_pairs(D::exp, f) * f;
  V y;
  if constexpr (D::level == Level::HA) {
    V t_hi, t_lo;
    lookup(vdpow_powers, j, t_hi, t_lo);
    y = (t_hi * p + t_lo) + t_hi;
  } else {
    const V t = lookup(vdpow_short_powers, j, V{});
    y = t * p + t;
  }
  return as_vector<V>(add<V>(bits_of(y), exponent));
}

/// y log2 x in a first part and the rest, which EP has none of.
template <Level level, class V>
TwoParts<V> exponent_of_power(V x, V y) {
  if constexpr (level == Level::EP) {
    return {y * short_log2(x), V{}};
  } else {
    const TwoParts<V> log = log2_parts<level>(x);
    const V y_hi = upper_half(y);
    return {y_hi * log.hi, (y - y_hi) * log.hi + y * log.lo};  // the first is exact
  }
}

/// x^y of all vectors of a block. Returns the mask of lanes for the slow path: those in which x is
/// not positive and normal or the result may not be normal.
///
/// All logarithms first, then all powers: a processor sees only so many operations ahead, and has
/// more of them to choose from where chains are short.
template <class D, class V, size_t vectors>
int pow_pass(const V (&x)[vectors], const V (&y)[vectors], V (&r)[vectors]) {
  constexpr uint32_t last = 0x408FEFFE;  // 1021.9995, high word
  constexpr bool two_parts = D::level != Level::EP;
  TwoParts<V> w[vectors];
#pragma GCC unroll 8
  for (size_t i = 0; i < vectors; ++i) w[i] = exponent_of_power<D::level>(x[i], y[i]);
  return by_vector<V, vectors>([&](int i) {
    const V whole = two_parts ? w[i].hi + w[i].lo : w[i].hi;
    const V k = whole + step_shifter;
    V f = w[i].hi - (k - step_shifter);
    if constexpr (two_parts) f = f + w[i].lo;
    r[i] = exp2_lane<D>(k, f);
    return mask_of(either(not_positive_normal_lanes(x[i]), lanes_above(whole, last)));
  });
}

}  // namespace ORV_TAG
}  // namespace orv
