// Polynomials with coefficients in ascending order.
#pragma once

namespace orv {
inline namespace ORV_TAG {

/// c[0] + c[1] x + ... by Horner's rule: the fewest operations, so the best throughput.
template <class C, int n, class V>
V horner(const C (&c)[n], V x) {
  if constexpr (n == 1) {
    return V{} + c[0];
  } else {
    V y = c[n - 1] * x + c[n - 2];
#pragma GCC unroll 16
    for (int k = n - 3; k >= 0; --k) y = y * x + c[k];
    return y;
  }
}

/// The same with a further term x^n.
template <class C, int n, class V>
V monic(const C (&c)[n], V x) {
  V y = x + c[n - 1];
#pragma GCC unroll 16
  for (int k = n - 2; k >= 0; --k) y = y * x + c[k];
  return y;
}

/// c[0] + c[1] x + ... in pairs (G. Estrin, 1960).
template <class C, int n, class V>
V by_pairs(const C (&c)[n], V x) {
  const V square = x * x;
  constexpr int last = (n - 1) / 2 * 2;
  V y = V{} + c[last];
  if constexpr (last + 1 < n) y = c[last + 1] * x + c[last];
#pragma GCC unroll 8
  for (int k = last - 2; k >= 0; k -= 2) y = (c[k] + c[k + 1] * x) + square * y;
  return y;
}

}  // namespace ORV_TAG
}  // namespace orv
