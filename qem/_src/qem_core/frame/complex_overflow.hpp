// SPDX-License-Identifier: MIT
// What complex arithmetic reports: an infinite part of a result whose four arguments are all finite
// and none of them zero.
#pragma once

#include "../simd/format.hpp"
#include "elements.hpp"

namespace orv {
inline namespace ORV_TAG {

/// All bits set in the lanes that are infinite.
template <class V>
V infinite(V x) {
  using F = Format<Lane<V>>;
  return equal(and_bits(x, ~bits_of(-Lane<V>{0})), splat<V>(F::infinity));
}

template <class Complex>
int complex_overflow(const Complex& a, const Complex& b, const Complex& r) {
  const auto is_infinite = [](auto x) { return __builtin_isinf(x); };
  const auto counts = [](auto x) { return __builtin_isfinite(x) && x != 0; };
  if (!is_infinite(r.re) && !is_infinite(r.im)) return QEM_STATUS_OK;
  const bool all_count = counts(a.re) && counts(a.im) && counts(b.re) && counts(b.im);
  return all_count ? QEM_STATUS_OVERFLOW : QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
