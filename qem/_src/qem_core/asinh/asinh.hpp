// SPDX-License-Identifier: MIT
// Asinh: the inverse hyperbolic sine. Nothing is reported.
#pragma once

#include "../_heap/real/inverse_hyperbolic.hpp"

namespace orv {
inline namespace ORV_TAG {

struct AsinhFormula {
  static constexpr char name[] = "Asinh";
  static constexpr bool odd = true, half = false;

  template <class V>
  static int rare(V x) {
    using T = Lane<V>;
    return high_word_above(x, Format<T>::high_word(square_limit<T>) - 1);
  }

  template <class V>
  static LogArgument<V> in_parts(V x) {
    const TwoParts<V> root = root_of_sum(splat<V>(1), x);
    return sum_in_parts(root.hi, x, root.lo);
  }
  /// s near 0 is 2 x/(root + 1), or x less a quotient whose roundings hardly count.
  template <bool bits_to_spare, class V>
  static LogRatio<V> as_ratio(V x) {
    const V root = square_root(x * x + 1);
    const Power<V> k = power_beside<V>(bits_of(x + root));
    const V far = not_one(k.power), rest = root - k.power;
    const V denominator = (root + k.power) + both(far, x);
    if constexpr (bits_to_spare) {
      const V halved = x + both(far, rest);
      return {k.exponent, (halved + halved) / denominator};
    } else {
      const V near = is_one(k.power), halved = x + rest;
      const V numerator = select(near, -x * rest, halved + halved);
      return {k.exponent, both(near, x) + numerator / denominator};
    }
  }

  static bool special(double x, double& y, int&) {
    y = x + x;
    return !__builtin_isfinite(x);
  }
};

template <class T, Level level>
using Asinh = InverseHyperbolic<AsinhFormula, T, level>;

}  // namespace ORV_TAG
}  // namespace orv
