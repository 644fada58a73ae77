// SPDX-License-Identifier: MIT
// Acosh: the inverse hyperbolic cosine, from 1 on.
//
// x^2 - 1 = d (x + 1) = d^2 + 2 d with d = x - 1, which is exact where it matters.
#pragma once

#include "../_heap/real/inverse_hyperbolic.hpp"

namespace orv {
inline namespace ORV_TAG {

struct AcoshFormula {
  static constexpr char name[] = "Acosh";
  static constexpr bool odd = false, half = false;

  template <class V>
  static int rare(V x) {
    using T = Lane<V>;
    using F = Format<T>;
    return high_word_outside(x, F::high_word(1), F::high_word(square_limit<T>) - 1);
  }

  template <class V>
  static LogArgument<V> in_parts(V x) {
    const V d = x - 1.0;
    const TwoParts<V> root = root_of_sum(d + d, d);
    return sum_in_parts(x, root.hi, root.lo);
  }
  /// s near 1 has two roundings less if the root is made of it, at the price of a division.
  template <bool bits_to_spare, class V>
  static LogRatio<V> as_ratio(V x) {
    const V d = x - 1, sum = x + 1;
    if constexpr (bits_to_spare) {
      const V root = square_root(d * sum);
      const Power<V> k = power_beside<V>(bits_of(x + root));
      const V far = not_one(k.power), halved = both(far, x - k.power) + root;
      return {k.exponent, (halved + halved) / ((x + k.power) + both(far, root))};
    } else {
      const V tanh = square_root(d / sum), root = sum * tanh;
      const Power<V> k = power_beside<V>(bits_of(x + root));
      const V halved = (x - k.power) + root;
      const V s = (halved + halved) / ((x + k.power) + root);
      return {k.exponent, select(is_one(k.power), tanh + tanh, s)};
    }
  }

  static bool special(double x, double& y, int& code) {
    if (x >= 1 && x <= Format<double>::largest) return false;
    y = x + x;
    if (x < 1) {
      const double zero = opaque(0.0);
      y = zero / zero;
      code = QEM_STATUS_DOMAIN;
    }
    return true;
  }
};

template <class T, Level level>
using Acosh = InverseHyperbolic<AcoshFormula, T, level>;

}  // namespace ORV_TAG
}  // namespace orv
