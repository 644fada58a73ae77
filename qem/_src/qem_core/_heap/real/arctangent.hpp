// SPDX-License-Identifier: MIT
// Arctangents of numbers and of quotients y/x, which for a number is y/1.
//
// By rows: with the middle c of that 16th of a binade in which v = y/x lies, atan(v) = atan(c) +
// atan(t), t = (v - c)/(1 + v c) = (y - c x)/(x + c y). A row has atan(c) in two parts, a
// polynomial serves t, at most a 32nd of the result, so that what t lacks hardly shows. There are
// rows where atan(v) is neither v nor pi/2; before them c is 0, behind them the last one's c stays.
//
// By eighths of a turn, without a table: y/x = tan(k pi/4 + atan(t)), |t| <= tan(pi/8), with k of
// 0, 1, 2 as y is above tan(pi/8) x and tan(3 pi/8) x. The polynomial is longer, and t shows its
// whole error.
#pragma once

#include "../../frame/level.hpp"
#include "../../simd/exact.hpp"
#include "../../simd/format.hpp"
#include "../../simd/lookup.hpp"
#include "../../simd/polynomial.hpp"
#include "tables/vdatan_tables.hpp"
#include "tables/vsatan_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct vatan_data;

template <>
struct vatan_data<double> {
  static constexpr const auto& table = _qemdAtanHATab;
  static constexpr double lowest = 0x1p-30, highest = 0x1p54;  // limits of the rows
  static constexpr const auto& ha = vdatan_ha;
  static constexpr const auto& ep = vdatan_ep;
  static constexpr const auto& eighth = vdatan_eighth;
  static constexpr uint64_t upper_half = ~0ull << 27;
};
template <>
struct vatan_data<float> {
  static constexpr const auto& table = _qemsAtanHATab;
  static constexpr float lowest = 0x1p-14, highest = 0x1p28;
  static constexpr const auto& ha = vsatan_ha;
  static constexpr const auto& la = vsatan_la;
  static constexpr const auto& ep = vsatan_ep;
  static constexpr const auto& eighth = vsatan_eighth;
  static constexpr uint32_t upper_half = ~0u << 12;
};

/// Floats are short enough for the eighths at LA.
template <class T, Level level>
inline constexpr bool arctangent_by_rows_at = level == Level::HA ||
                                              (level == Level::LA && sizeof(T) == sizeof(double));

// ---- By rows -----------------------------------------------------------------------------------

/// The row of a v >= 0, infinity included. NaN has one, too.
template <class V>
class ArctangentRow {
  using T = Lane<V>;
  using F = Format<T>;
  static constexpr int row_bits = 4, rest_bits = F::fraction_bits - row_bits;
  static constexpr typename F::Bits half_row = typename F::Bits{1} << (rest_bits - 1);
  static constexpr T lowest = vatan_data<T>::lowest, highest = vatan_data<T>::highest;
  // The middles of the last rows on either side; what is before the first one has its row 0.
  static constexpr T below = lowest * (1 - T{1} / 64), above = highest * (1 - T{1} / 64);

 public:
  explicit ArctangentRow(V v)
      : ArctangentRow(v, minimum(maximum(v, splat<V>(below)), splat<V>(above))) {}

  /// c, of six bits
  V middle() const { return middle_; }
  /// atan(c)
  void arctangent(V& hi, V& lo) const { lookup(vatan_data<T>::table, index_, hi, lo); }

 private:
  ArctangentRow(V v, V inside)
      : middle_(without(greater(splat<V>(lowest), v),
                        or_bits(and_bits(inside, ~(2 * half_row - 1)), half_row))),
        index_(inside) {}

  static constexpr int shift = rest_bits % 32;  // in the word that has the exponent
  V middle_;
  IndicesInHighWord<V, shift, (F::high_word(below) >> shift)> index_;
};

/// atan(c) + atan(t). At LA c's lower part is left out.
template <Level level, class V>
TwoParts<V> arctangent_from_row(const ArctangentRow<V>& row, V t) {
  V hi, lo;
  row.arctangent(hi, lo);
  const V square = t * t, rest = (t * square) * horner(vatan_data<Lane<V>>::ha, square);
  if constexpr (level == Level::LA) return {hi, t + rest};
  return {hi, t + (lo + rest)};
}

template <Level level, class V>
TwoParts<V> arctangent_by_rows(V v) {
  const ArctangentRow<V> row(v);
  const V c = row.middle();
  return arctangent_from_row<level>(row, (v - c) / (1 + v * c));
}

/// Of y/x. At HA the quotient only chooses the row.
template <Level level, class V>
TwoParts<V> arctangent_by_rows(V y, V x) {
  using D = vatan_data<Lane<V>>;
  // No division by 0 and no overflow, whose flags an angle should not raise.
  const V v = y / maximum(x, y * (1 / D::highest));
  if constexpr (level == Level::LA) return arctangent_by_rows<level>(v);

  const ArctangentRow<V> row(v);
  const V c = row.middle(), x_hi = and_bits(x, D::upper_half);
  const V less = (y - c * x_hi) - c * (x - x_hi);  // exact but for the last difference
  return arctangent_from_row<level>(row, less / (x + c * y));
}

// ---- By eighths of a turn ----------------------------------------------------------------------

template <Level level, class T>
constexpr const auto& eighths_polynomial() {
  if constexpr (level == Level::LA) {
    return vatan_data<T>::la;
  } else {
    return vatan_data<T>::ep;
  }
}

template <class V>
struct Eighths {
  V k, t;
};

/// Of y/x, both not negative.
template <class V>
Eighths<V> eighths_of_turn(V y, V x) {
  using T = Lane<V>;
  const V above = greater(y, static_cast<T>(0x1.A827999FCEF32p-2) * x);
  const V far_above = greater(y, static_cast<T>(0x1.3504F333F9DE6p1) * x);
  const V one = splat<V>(1);
  return {both(above, one) + both(far_above, one),
          (without(far_above, y) - both(above, x)) / (without(far_above, x) + both(above, y))};
}

/// k pi/4 + atan(t), at EP with pi/4 in one part.
template <Level level, class V>
TwoParts<V> arctangent_by_eighths(const Eighths<V>& turn) {
  const V k = turn.k, t = turn.t, square = t * t;
  constexpr const auto& eighth = vatan_data<Lane<V>>::eighth;
  const V rest = (t * square) * horner(eighths_polynomial<level, Lane<V>>(), square);
  if constexpr (level == Level::EP) return {k * (eighth[0] + eighth[1]), t + rest};
  return {k * eighth[0], t + (rest + k * eighth[1])};
}

// ---- Either way --------------------------------------------------------------------------------

/// Of v >= 0. The second part is small beside the first one, or that is 0.
template <Level level, class V>
TwoParts<V> arctangent(V v) {
  if constexpr (arctangent_by_rows_at<Lane<V>, level>) {
    return arctangent_by_rows<level>(v);
  } else {
    return arctangent_by_eighths<level>(eighths_of_turn(v, splat<V>(1)));
  }
}

/// The angle of the point (x, y) for y >= 0, with two parts likewise.
template <Level level, class V>
TwoParts<V> upper_angle(V y, V x) {
  using T = Lane<V>;
  const V left = greater(V{}, x), sign = and_bits(left, bits_of(T{-0.0}));
  if constexpr (arctangent_by_rows_at<T, level>) {
    constexpr const auto& eighth = vatan_data<T>::eighth;
    const TwoParts<V> a = arctangent_by_rows<level>(y, absolute(x));
    const V half_turn = both(left, splat<V>(4 * eighth[0]));
    const TwoParts<V> sum = exact_sum_ordered(half_turn, exclusive(a.hi, sign));
    const V lower = both(left, splat<V>(4 * eighth[1]));
    return {sum.hi, sum.lo + (lower + exclusive(a.lo, sign))};
  } else {
    const Eighths<V> turn = eighths_of_turn(y, absolute(x));
    const V k = both(left, splat<V>(4)) + exclusive(turn.k, sign);
    return arctangent_by_eighths<level>(Eighths<V>{k, exclusive(turn.t, sign)});
  }
}

/// Lanes that upper_angle does not serve: both numbers 0, one NaN, or the greater one far out.
template <class V>
int no_upper_angle(V y, V x) {
  using T = Lane<V>;
  constexpr bool is_double = sizeof(T) == sizeof(double);
  const V sum = absolute(y) + absolute(x);
  return outside(sum, is_double ? T(0x1p-900) : T(0x1p-90), is_double ? T(0x1p960) : T(0x1p90));
}

}  // namespace ORV_TAG
}  // namespace orv
