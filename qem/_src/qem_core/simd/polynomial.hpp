// SPDX-License-Identifier: MIT
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

/// The same, of `n` coefficients from c on, in pairs: half as long a wait. x2 is x^2.
template <int n, class C, class V>
V by_pairs(const C* c, V x, V x2) {
  constexpr int last = (n - 1) / 2 * 2;
  V y = V{} + c[last];
  if constexpr (last + 1 < n) y = c[last + 1] * x + c[last];
#pragma GCC unroll 8
  for (int k = last - 2; k >= 0; k -= 2) y = y * x2 + (c[k + 1] * x + c[k]);
  return y;
}
template <class C, int n, class V>
V by_pairs(const C (&c)[n], V x) {
  return by_pairs<n>(c, x, x * x);
}

/// The same, pairs joined in pairs again (G. Estrin, 1960): the shortest wait.
template <class C, size_t n, class V>
V estrin(const C (&c)[n], V x) {
  if constexpr (n == 1) return V{} + c[0];
  if constexpr (n == 2) return c[1] * x + c[0];
  if constexpr (n > 2) {
    static_assert(n % 2 == 0);
    V pair[n / 2];
    for (size_t k = 0; k < n / 2; ++k) pair[k] = c[2 * k + 1] * x + c[2 * k];
    return estrin(pair, x * x);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
