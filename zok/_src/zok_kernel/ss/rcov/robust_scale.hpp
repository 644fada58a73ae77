// SPDX-License-Identifier: MIT
// Medians, and the location and scale of one sample that may hold outliers.
#pragma once

#include <orv/sort.h>
#include <stdint.h>
#include <string.h>

#include "../../../zok_sub_kernel/_math/qsort.hpp"

namespace orv {
inline namespace ORV_TAG {

inline double select(intptr_t n, double* a, intptr_t k) {
  return __zokdQSortSelect(static_cast<int32_t>(n), a, static_cast<int32_t>(k));
}
inline float select(intptr_t n, float* a, intptr_t k) {
  return __zoksQSortSelect(static_cast<int32_t>(n), a, static_cast<int32_t>(k));
}

/// Elements between two bounds, and how many are below them.
struct Between {
  intptr_t below, count;
};

/// Copies the elements of x from low to high to `kept`.
template <class T>
Between keep_between(intptr_t n, const T* x, T low, T high, T* kept) {
  using L = KeyLanes<T>;
  const auto lows = L::all(low), highs = L::all(high);
  Between found = {0, 0};
  intptr_t i = 0;
  for (; i + mask_bits <= n; i += mask_bits) {
    Mask below = 0, above = 0;
    for (intptr_t k = 0; k < mask_bits; k += L::count) {
      const auto v = L::load(x + i + k);
      below |= L::template compare<_CMP_LT_OQ>(v, lows) << k;
      above |= L::template compare<_CMP_GT_OQ>(v, highs) << k;
    }
    found.below += __builtin_popcountll(below);
    for (Mask inside = ~(below | above); inside != 0; inside &= inside - 1) {
      kept[found.count++] = x[i + lowest_bit(inside)];
    }
  }
  for (; i < n; ++i) {
    if (x[i] < low) {
      ++found.below;
    } else if (!(x[i] > high)) {
      kept[found.count++] = x[i];
    }
  }
  return found;
}

/// The elements of ranks k and k + 1 among the first n of a, which are moved about; the last one
/// has no other behind it.
template <class T>
struct Neighbours {
  T first, second;
};

template <class T>
Neighbours<T> neighbours(intptr_t n, T* a, intptr_t k) {
  const T first = select(n, a, k);
  T second = k + 1 < n ? a[k + 1] : first;
  for (intptr_t i = k + 2; i < n; ++i) second = a[i] < second ? a[i] : second;
  return {first, second};
}

/// The elements of ranks k and k + 1 of x. A sample tells bounds, between which they almost always
/// are with few others (after R. W. Floyd and R. L. Rivest 1975). `work` has n elements.
template <class T>
Neighbours<T> order_statistics(intptr_t n, const T* x, intptr_t k, T* work) {
  constexpr intptr_t worth_a_sample = 4096, most_sampled = 2048;
  if (n >= worth_a_sample) {
    const intptr_t sampled = n / 16 < most_sampled ? n / 16 : most_sampled;
    const auto part = [](int64_t i, int64_t of, int64_t whole) {
      return static_cast<intptr_t>(i * whole / of);
    };
    intptr_t margin = 2;  // three deviations of a rank among the sampled, at its median
    while (4 * margin * margin < 9 * sampled) ++margin;
    for (intptr_t i = 0; i < sampled; ++i) work[i] = x[part(i, sampled, n)];
    const intptr_t middle = part(k, n, sampled);
    if (middle >= margin && middle + margin < sampled) {
      const T high = select(sampled, work, middle + margin);
      const T low = select(middle + margin, work, middle - margin);
      const Between found = keep_between(n, x, low, high, work);
      const intptr_t rank = k - found.below;
      if (rank >= 0 && rank + 1 < found.count) return neighbours(found.count, work, rank);
    }
  }
  memcpy(work, x, static_cast<size_t>(n) * sizeof(T));
  return neighbours(n, work, k);
}

/// The quantile of order 1/2. `work` has n elements.
template <class T>
T median(intptr_t n, const T* x, T* work) {
  const Neighbours<T> m = order_statistics(n, x, (n - 1) / 2, work);
  return n % 2 != 0 ? m.first : T(0.5) * m.first + T(0.5) * m.second;
}

template <class T>
struct LocationScale {
  T location, scale;
};

/// Adds up what f makes of the elements of y, in vectors and for the rest in numbers: an array of
/// `sums` of them. Sums of many are in doubles.
template <int sums, class T, class Function>
void add_up(intptr_t n, const T* y, double* totals, Function f) {
  using L = Lanes<T>;
  using Vector = typename L::Vector;
  constexpr intptr_t block = 512;
  for (int s = 0; s < sums; ++s) totals[s] = 0;
  intptr_t i = 0;
  while (i + L::count <= n) {
    const intptr_t end = n - i < block ? i + (n - i) / L::count * L::count : i + block;
    Vector sum[sums];
    for (auto& s : sum) s = L::all(0);
    for (; i < end; i += L::count) f(L::load(y + i), sum);
    for (int s = 0; s < sums; ++s) {
      for (int k = 0; k < L::count; ++k) totals[s] += sum[s][k];
    }
  }
  if (i == n) return;
  Vector sum[sums];
  for (auto& s : sum) s = L::all(0);
  T rest[L::count];
  for (int k = 0; k < L::count; ++k) rest[k] = y[i + k < n ? i + k : i];
  f(L::load(rest), sum);
  for (int s = 0; s < sums; ++s) {
    for (intptr_t k = 0; k < n - i; ++k) totals[s] += sum[s][k];
  }
}

/// Biweight location and truncated scale about it (V. J. Yohai and R. H. Zamar 1988, R. A. Maronna
/// and R. H. Zamar 2002). What is infinite has no part. `deviations` and `work` have n elements.
template <class T>
LocationScale<T> robust_scale(intptr_t n, const T* y, T* deviations, T* work) {
  using L = Lanes<T>;
  using Vector = typename L::Vector;
  constexpr T c1 = T(4.5), c2 = 3;
  const T m = median(n, y, work);
  for (intptr_t i = 0; i < n; ++i) {
    const T d = y[i] - m;
    deviations[i] = d < 0 ? -d : d;
  }
  const T s = median(n, deviations, work), inverse = s > 0 ? 1 / s : 0;

  double totals[2];
  const Vector ms = L::all(m), by_c1 = L::all(inverse / c1), one = L::all(1), zero = L::all(0);
  add_up<2>(n, y, totals, [&](Vector x, Vector* sum) {
    const Vector d = x - ms, u = d * by_c1, rest = one - u * u, v = rest * rest;
    sum[0] += u * u > one ? zero : v;
    sum[1] += u * u > one ? zero : v * d;
  });
  const T mu = m + static_cast<T>(totals[1] / totals[0]);

  const Vector mus = L::all(mu), inverses = L::all(inverse), most = L::all(c2 * c2);
  add_up<1>(n, y, totals, [&](Vector x, Vector* sum) {
    const Vector t = inverses * (x - mus);
    sum[0] += t * t > most ? most : t * t;
  });
  return {mu, static_cast<T>(__builtin_sqrt(totals[0] / static_cast<double>(n)) * s)};
}

}  // namespace ORV_TAG
}  // namespace orv
