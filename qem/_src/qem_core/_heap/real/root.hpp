// SPDX-License-Identifier: MIT
// What square roots and their kin share: how far a rounded root is off, and results that are
// brought to their scale last.
#pragma once

#include "../../simd/exact.hpp"
#include "../../simd/format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The upper half of the significand, 26 bits of a double's 53: the square is exact, and so is the
/// product with what is left.
inline constexpr uint64_t upper_half_of(double) { return 0xFFFFFFFFF8000000; }
inline constexpr uint32_t upper_half_of(float) { return 0xFFFFF000; }
template <class V>
V upper_half(V x) {
  return and_bits(x, upper_half_of(Lane<V>{}));
}

/// The first part is exact; what the second one's rounding leaves is far below an ulp of an ulp.
template <class V>
TwoParts<V> square_in_parts(V x) {
  const V upper = upper_half(x);
  return {upper * upper, (x + upper) * (x - upper)};
}

/// x - root^2 for the rounded square root of x, or one a few ulp off.
template <class V>
V root_residual(V x, V root) {
  const TwoParts<V> square = square_in_parts(root);
  return (x - square.hi) - square.lo;
}

/// (hi + lo) scale for a power of two, rounded once, also to a denormal.
inline double scaled(TwoParts<double> x, double scale) {
  const double y = (x.hi + x.lo) * scale;
  if (y >= Format<double>::smallest_normal) return y;
  const double rounded = x.hi * scale;
  const double rest = (x.hi - rounded * (1 / scale)) + x.lo;
  return rounded + rest * scale;
}

}  // namespace ORV_TAG
}  // namespace orv
