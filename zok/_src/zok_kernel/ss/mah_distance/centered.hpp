// SPDX-License-Identifier: MIT
// Observations less a mean, and products of them.
#pragma once

#include <math.h>

#include "../../../zok_sub_kernel/_service/lanes.hpp"

namespace orv {
inline namespace ORV_TAG {

inline double root(double x) { return sqrt(x); }
inline float root(float x) { return sqrtf(x); }

/// a . b; the order of the sums depends on n alone.
template <class T>
T dot(const T* a, const T* b, intptr_t n) {
  using L = Lanes<T>;
  auto sum = L::all(0);
  intptr_t i = 0;
  for (; i + L::count <= n; i += L::count) sum += L::load(a + i) * L::load(b + i);
  if (i < n) {
    const __m256i rest = L::first(n - i);
    sum += L::load(a + i, rest) * L::load(b + i, rest);
  }
  T total = sum[0];
  for (int k = 1; k < L::count; ++k) total += sum[k];
  return total;
}

/// n observations of p variables.
template <class T>
struct Observations {
  const T* x;
  intptr_t p, n;
  bool rows;
};

/// Brings `count` observations from the first on, less the mean, one after another.
template <class T>
void center(const Observations<T>& o, const T* mean, intptr_t first, intptr_t count, T* centered) {
  const intptr_t p = o.p;
  const T* from = o.x + first * p;
  if (o.rows) {
    gather_rows(o.x + first, o.n, p, count, centered, p);
    from = centered;
  }
  using L = Lanes<T>;
  for (intptr_t k = 0; k < count; ++k, from += p, centered += p) {
    intptr_t j = 0;
    for (; j + L::count <= p; j += L::count) {
      L::store(centered + j, L::load(from + j) - L::load(mean + j));
    }
    for (; j < p; ++j) centered[j] = from[j] - mean[j];
  }
}

}  // namespace ORV_TAG
}  // namespace orv
