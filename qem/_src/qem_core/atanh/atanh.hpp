// SPDX-License-Identifier: MIT
// Atanh: the inverse hyperbolic tangent, up to 1.
#pragma once

#include "../_heap/real/inverse_hyperbolic.hpp"

namespace orv {
inline namespace ORV_TAG {

struct AtanhFormula {
  static constexpr char name[] = "Atanh";
  static constexpr bool odd = true, half = true;

  /// So close to 1 the differences of as_ratio still are exact.
  template <class V>
  static int rare(V x) {
    return high_word_above(x, Format<Lane<V>>::high_word(1 - 0x1p-20) - 1);
  }

  /// A short q beside n/d, and the quotient's rest by what q d leaves of n.
  template <class V>
  static LogArgument<V> in_parts(V x) {
    const V n = 1.0 + x, n_lo = x - (n - 1.0);
    const V d = 1.0 - x, d_lo = (1.0 - d) - x;
    const V reciprocal = 1.0 / d;
    const V q = upper_half(n * reciprocal);
    const V d1 = short_part(d), d2 = d - d1;
    const auto rest = exact_sum_ordered((n - q * d1) - q * d2, n_lo - q * d_lo);
    return {q, rest.hi, rest.lo + rest.hi * (x * reciprocal)};  // 1/d = 1 + x/d
  }
  /// The numerator is (1 + x) - K (1 - x) but for the rounding of its last addition.
  template <bool bits_to_spare, class V>
  static LogRatio<V> as_ratio(V x) {
    const V n = 1 + x, d = 1 - x;
    const Int<V> quotient = subtract<V>(bits_of(n), bits_of(d));
    const Power<V> k = power_beside<V>(add<V>(quotient, bits_of(splat<V>(1))));
    const V Kx = k.power * x;
    const V halved = ((1 - k.power) + Kx) + x;
    return {k.exponent, (halved + halved) / (((1 + k.power) - Kx) + x)};
  }

  static bool special(double x, double& y, int& code) {
    const double size = __builtin_fabs(x), zero = opaque(0.0);
    if (size < 1) return false;
    y = x + x;
    if (size == 1) {
      y = x / zero;
      code = QEM_STATUS_SINGULARITY;
    } else if (size > 1) {
      y = zero / zero;
      code = QEM_STATUS_DOMAIN;
    }
    return true;
  }
};

template <class T, Level level>
using Atanh = InverseHyperbolic<AtanhFormula, T, level>;

}  // namespace ORV_TAG
}  // namespace orv
