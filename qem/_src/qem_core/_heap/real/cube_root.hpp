// SPDX-License-Identifier: MIT
// What Cbrt, InvCbrt and Pow2o3 share: the reduction of the argument and the root in two parts.
//
// |x| = 2^(3 q + j) m with m in [1, 2), c the middle of that 32nd of [1, 2) in which m lies, and
// z = (m - c)/c, which is at most 1/65. Then |x|^p, p = 1/3 or -1/3, is 2^(3 q p) times (2^j c)^p
// from a table of 3 times 32 rows, times (1 + z)^p, a polynomial. HA has the factor from the table
// in two parts and adds the lower one to what the polynomial has beyond 1; it is all but exact.
//
// A power is a record of a table and of polynomials:
//   table                           twice 96 pairs: (2^(j - bias) c)^p and 1/c, the former's lower
//                                   part and 0
//   ha_series, la_series, ep_series ((1 + z)^p - 1)/z, ascending
#pragma once

#include "../../frame/function_name.hpp"
#include "../../frame/guarded.hpp"
#include "../../frame/level.hpp"
#include "../../simd/exact.hpp"
#include "../../simd/format.hpp"
#include "../../simd/lookup.hpp"
#include "../../simd/polynomial.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class V>
class CubeRootArgument {
  using T = Lane<V>;
  using F = Format<T>;
  using Bits = typename F::Bits;
  static constexpr int bits = 8 * sizeof(T), interval_bits = 5;
  static constexpr Bits exponent = Bits{2 * F::bias + 1} << F::fraction_bits;
  static constexpr Bits fraction = (Bits{1} << F::fraction_bits) - 1;
  static constexpr Bits within_interval = fraction >> interval_bits;

 public:
  using Row = OffsetsOfNumbers<V, 4>;

  explicit CubeRootArgument(V x) : x_(x), third_(third(x)), row_(row(x, third_)) {}

  V sign() const { return and_bits(x_, Bits{1} << (bits - 1)); }
  /// m - c, as if m lay in the first interval
  V from_middle() const {
    return or_bits(and_bits(x_, within_interval), bits_of(T{1})) - (T{1} + T{1} / 64);
  }
  const Row& row() const { return row_; }

  /// y, positive, times 2^(times q), q counted from the smallest exponent.
  template <int times>
  V scaled(V y) const {
    if constexpr (times < 0) {
      return as_vector<V>(subtract<V>(bits_of(y), shift_left<V, F::fraction_bits>(third_)));
    } else {
      return as_vector<V>(add<V>(bits_of(y), shift_left<V, F::fraction_bits + times - 1>(third_)));
    }
  }

 private:
  /// A third of the exponent field, rounded down. The field ends at bit 15 here, and a factor just
  /// above a third with as many bits behind the point as the field and its sign have brings the
  /// quotient into the upper half of the product.
  static Int<V> third(V x) {
    constexpr int field_bits = bits - F::fraction_bits;
    constexpr uint16_t factor = (1 << field_bits) / 3 + 1;
    const V field = as_vector<V>(shift_right_logical<V, bits - 16>(bits_of(x)));
    return multiply_short_high<V>(bits_of(and_bits(field, exponent >> (bits - 16))), factor);
  }
  /// 32 j and the number of the interval: j is what thrice the quotient leaves of the field.
  static Row row(V x, Int<V> third) {
    constexpr int shift = F::fraction_bits - interval_bits - __builtin_ctz(sizeof(T));
    constexpr Bits mask = (exponent | (fraction & ~within_interval)) >> shift;
    const V upper = as_vector<V>(shift_right_logical<V, shift>(bits_of(x)));
    const Int<V> number = bits_of(and_bits(upper, mask));
    constexpr int16_t whole = (3 << interval_bits) * sizeof(T);
    return Row(as_vector<V>(subtract<V>(number, multiply_short<V>(third, whole))));
  }

  V x_;
  Int<V> third_;
  Row row_;
};

/// The root of what is left of the argument without its sign and 2^(3 q), the second part at most a
/// 190th of the first.
template <class Power, Level level, class V>
TwoParts<V> cube_root(const CubeRootArgument<V>& x) {
  V t, reciprocal;
  lookup(Power::table, x.row(), t, reciprocal);
  const V z = x.from_middle() * reciprocal;
  const auto rest = [&](const auto& series) { return (t * z) * horner(series, z); };
  if constexpr (level == Level::HA) {
    V t_low, none;
    lookup(Power::table + 1, x.row(), t_low, none);
    return {t, rest(Power::ha_series) + t_low};
  } else if constexpr (level == Level::LA) {
    return {t, rest(Power::la_series)};
  } else {
    return {t, rest(Power::ep_series)};
  }
}

/// Zeros, denormals, infinities and NaN are not for the lanes.
template <class Element>
struct CubeRootFrame {
  using T = Element;
  static constexpr int block = 32 / sizeof(T);
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return not_normal(x);
  }
};

// ---- Slow paths: zero, denormals, infinity and NaN ---------------------------------------------

/// What brings denormals among the normal numbers, and its cube root.
template <class T>
inline constexpr T up = 0x1p996;
template <>
inline constexpr float up<float> = 0x1p24f;
template <class T>
inline constexpr T root_of_up = 0x1p332;
template <>
inline constexpr float root_of_up<float> = 0x1p8f;

/// Not where denormals count as zeros.
template <class T>
bool is_denormal(T x) {
  return x != 0 && __builtin_fabs(x) < Format<T>::smallest_normal;
}

/// One element by the lane formula.
template <class Op, class T>
T alone(T x) {
  return Op::lane(splat<Narrow<T>>(x))[0];
}

}  // namespace ORV_TAG
}  // namespace orv
