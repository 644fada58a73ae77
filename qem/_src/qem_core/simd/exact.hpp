// SPDX-License-Identifier: MIT
// Sums and products in two parts whose sum is exact, for vectors of doubles and for long double.
#pragma once

#include "vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class V>
struct TwoParts {
  V hi, lo;
};

/// a + b (D. E. Knuth, 1969).
template <class V>
TwoParts<V> exact_sum(V a, V b) {
  const V s = a + b, t = s - a;
  return {s, (a - (s - t)) + (b - t)};
}

/// a + b where |a| >= |b| or a is 0 (T. J. Dekker, 1971).
template <class V>
TwoParts<V> exact_sum_ordered(V a, V b) {
  const V s = a + b;
  return {s, (a - s) + b};
}

/// A number and its two halves, whose products are exact (G. W. Veltkamp, 1968). It is below 2^-30
/// times the largest number.
template <class V>
struct Halves {
  V whole, hi, lo;

  explicit Halves(V x) : whole(x) {
    const V c = x * 0x1.0000002p27;
    hi = c - (c - x);
    lo = x - hi;
  }
  Halves(V all, V upper, V lower) : whole(all), hi(upper), lo(lower) {}
  Halves operator-() const { return {-whole, -hi, -lo}; }
};
template <>
inline Halves<long double>::Halves(long double x) : whole(x) {
  const long double c = x * 0x1.00000001p32L;
  hi = c - (c - x);
  lo = x - hi;
}

/// a b (T. J. Dekker, 1971), where neither the product nor its parts leave the range.
template <class V>
TwoParts<V> exact_product(const Halves<V>& a, const Halves<V>& b) {
  const V p = a.whole * b.whole;
  return {p, ((a.hi * b.hi - p) + a.hi * b.lo + a.lo * b.hi) + a.lo * b.lo};
}

}  // namespace ORV_TAG
}  // namespace orv
