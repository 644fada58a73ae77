// SPDX-License-Identifier: MIT
// Quicksort (Hoare 1962) with the median of three as pivot, and selection by the same partition.
//
// The exchanges are those of two scans that run towards each other and stop at every element that
// does not belong on their side, those equal to the pivot included. But a scan guesses wrong about
// every second element. So the stops of a block of elements are found at once, by comparing vectors
// (after Edelkamp and Weiss 2016), and are then exchanged in the order of the scans.
//
// What is sorted is seen through a view, elements counting from 0:
//
//   key(i)                    the key of element i
//   exchange(i, j)            exchanges two elements
//   order(i, j)               the same if key(i) > key(j)
//   stops(i, count, pivot)    where scans would stop among elements i to i + count - 1
//   finish(lo, hi), small     sorts elements lo to hi, at most `small`, in another way
#pragma once

#include <stddef.h>

#include "../_service/lanes.hpp"

namespace orv {
inline namespace ORV_TAG {

using Mask = uintptr_t;
inline constexpr intptr_t mask_bits = 8 * sizeof(Mask);

inline intptr_t lowest_bit(Mask mask) {
  return sizeof(Mask) == 8 ? __builtin_ctzll(mask) : __builtin_ctz(static_cast<uint32_t>(mask));
}
inline intptr_t highest_bit(Mask mask) {
  return sizeof(Mask) == 8 ? 63 ^ __builtin_clzll(mask)
                           : 31 ^ __builtin_clz(static_cast<uint32_t>(mask));
}

/// Bit k: the scan upward, or downward, stops at the k-th of up to mask_bits elements. They stop at
/// what is not below, or not above, the pivot.
struct Stops {
  Mask up, down;
};

template <class T>
struct KeyLanes;

template <>
struct KeyLanes<double> : Lanes<double> {
  static double min(double x, double y) {
    return _mm_cvtsd_f64(_mm_min_sd(_mm_set_sd(x), _mm_set_sd(y)));
  }
  static double max(double x, double y) {
    return _mm_cvtsd_f64(_mm_max_sd(_mm_set_sd(x), _mm_set_sd(y)));
  }
  template <int relation>
  static Mask compare(Vector x, Vector y) {
    return static_cast<Mask>(_mm256_movemask_pd(_mm256_cmp_pd(x, y, relation)));
  }
};

template <>
struct KeyLanes<float> : Lanes<float> {
  static float min(float x, float y) {
    return _mm_cvtss_f32(_mm_min_ss(_mm_set_ss(x), _mm_set_ss(y)));
  }
  static float max(float x, float y) {
    return _mm_cvtss_f32(_mm_max_ss(_mm_set_ss(x), _mm_set_ss(y)));
  }
  template <int relation>
  static Mask compare(Vector x, Vector y) {
    return static_cast<Mask>(_mm256_movemask_ps(_mm256_cmp_ps(x, y, relation)));
  }
};

/// Neighbouring keys.
template <class T>
class Keys {
 public:
  using Key = T;
  static constexpr intptr_t small = 7;

  explicit Keys(T* a) : a_(a) {}

  T key(intptr_t i) const { return a_[i]; }

  void exchange(intptr_t i, intptr_t j) const {
    const T x = a_[i];
    a_[i] = a_[j];
    a_[j] = x;
  }

  /// Without a branch, which would be guessed wrong half the time.
  void order(intptr_t i, intptr_t j) const {
    const T x = a_[i], y = a_[j];
    a_[i] = Lanes::min(y, x);
    a_[j] = Lanes::max(x, y);
  }

  Stops stops(intptr_t i, intptr_t count, T pivot) const {
    const auto pivots = Lanes::all(pivot);
    Stops stops = {0, 0};
    intptr_t k = 0;
    for (; k + Lanes::count <= count; k += Lanes::count) {
      const auto keys = Lanes::load(a_ + i + k);
      stops.up |= Lanes::template compare<_CMP_NLT_UQ>(keys, pivots) << k;
      stops.down |= Lanes::template compare<_CMP_NGT_UQ>(keys, pivots) << k;
    }
    if (k == count) return stops;
    const auto keys = Lanes::load(a_ + i + k, Lanes::first(count - k));
    const Mask valid = (Mask{1} << (count - k)) - 1;
    stops.up |= (Lanes::template compare<_CMP_NLT_UQ>(keys, pivots) & valid) << k;
    stops.down |= (Lanes::template compare<_CMP_NGT_UQ>(keys, pivots) & valid) << k;
    return stops;
  }

  /// Insertion, but every element sinks past all that it might, without a branch.
  void finish(intptr_t lo, intptr_t hi) const {
    switch (hi - lo) {
      case 6:
        return sink_all<7>(a_ + lo);
      case 5:
        return sink_all<6>(a_ + lo);
      case 4:
        return sink_all<5>(a_ + lo);
      case 3:
        return sink_all<4>(a_ + lo);
      case 2:
        return sink_all<3>(a_ + lo);
      case 1:
        return sink_all<2>(a_ + lo);
    }
  }

 private:
  using Lanes = KeyLanes<T>;

  template <int n>
  static void sink_all(T* a) {
    T x[n];
    for (int i = 0; i < n; ++i) x[i] = a[i];
#pragma GCC unroll 8
    for (int i = 1; i < n; ++i) {
#pragma GCC unroll 8
      for (int k = i; k > 0; --k) {
        const T u = x[k - 1], v = x[k];
        x[k - 1] = Lanes::min(v, u);
        x[k] = Lanes::max(u, v);
      }
    }
    for (int i = 0; i < n; ++i) a[i] = x[i];
  }

  T* a_;
};

/// What two scans have before them: elements first to last - 1. What they left behind stops them at
/// the latest.
struct Gap {
  intptr_t first, last;
};

/// Lets the scans run while two blocks are between them.
template <class View>
Gap exchange_blocks(View view, typename View::Key pivot, Gap gap) {
  constexpr intptr_t block = mask_bits / 2;
  Mask up = 0, down = 0;  // stops not yet exchanged, in the first and the last block
  while (gap.last - gap.first > mask_bits) {
    if (up == 0) up = view.stops(gap.first, block, pivot).up;
    if (down == 0) down = view.stops(gap.last - block, block, pivot).down;
    while (up != 0 && down != 0) {
      const intptr_t j = highest_bit(down);
      view.exchange(gap.first + lowest_bit(up), gap.last - block + j);
      up &= up - 1;
      down ^= Mask{1} << j;
    }
    if (up == 0) gap.first += block;
    if (down == 0) gap.last -= block;
  }
  if (up != 0) gap.first += lowest_bit(up);
  if (down != 0) gap.last -= block - 1 - highest_bit(down);
  return gap;
}

/// Lets the scans run till they have met, over at most mask_bits elements. Tells where they end:
/// the upward one at `last`, the downward one at `first`.
template <class View>
Gap exchange_rest(View view, typename View::Key pivot, Gap gap) {
  const intptr_t count = gap.last - gap.first;
  auto [up, down] = view.stops(gap.first, count, pivot);
  intptr_t low = -1, high = count;  // exchanged last
  intptr_t i, j;
  for (;;) {
    i = up != 0 ? lowest_bit(up) : count;
    j = down != 0 ? highest_bit(down) : -1;
    if (i > j) break;
    // Where they meet at an element equal to the pivot, both go on.
    if (i < j) view.exchange(gap.first + (low = i), gap.first + (high = j));
    up &= up - 1;
    down ^= Mask{1} << j;
  }
  return {gap.first + (j > low ? j : low), gap.first + (i < high ? i : high)};
}

/// A part that has been split: elements from lo to `lower` are not above those from `upper` to hi.
/// One in its final place may stand between.
struct Split {
  intptr_t lower, upper;
};

/// Splits elements lo to hi, at least 3.
template <class View>
Split partition(View view, intptr_t lo, intptr_t hi) {
  view.exchange(lo + 1, (lo + hi) >> 1);
  view.order(lo, hi);
  view.order(lo + 1, hi);
  view.order(lo, lo + 1);
  const auto pivot = view.key(lo + 1);
  const Gap end = exchange_rest(view, pivot, exchange_blocks(view, pivot, {lo + 2, hi}));
  view.exchange(lo + 1, end.first);
  return {end.first - 1, end.last};
}

/// Sorts n elements. The larger part of a split waits, so that no more than log2(n) do. Their
/// bounds are kept as Index, which has to hold integers up to n.
template <class Index, class View>
void sort(View view, intptr_t n) {
  Index waiting[128];
  Index* top = waiting;
  intptr_t lo = 0, hi = n - 1;
  for (;;) {
    while (hi - lo >= View::small) {
      const Split split = partition(view, lo, hi);
      const bool upper_first = hi - split.upper < split.lower - lo;
      *top++ = static_cast<Index>(upper_first ? lo : split.upper);
      *top++ = static_cast<Index>(upper_first ? split.lower : hi);
      lo = upper_first ? split.upper : lo;
      hi = upper_first ? hi : split.lower;
    }
    view.finish(lo, hi);
    if (top == waiting) return;
    hi = static_cast<intptr_t>(*--top);
    lo = static_cast<intptr_t>(*--top);
  }
}

/// The element of rank k, moved there.
template <class View>
typename View::Key select(View view, intptr_t n, intptr_t k) {
  intptr_t lo = 0, hi = n - 1;
  while (hi > lo + 1) {
    const Split split = partition(view, lo, hi);
    if (k <= split.lower + 1) hi = split.lower;
    if (k >= split.lower + 1) lo = split.upper;
  }
  if (hi == lo + 1) view.order(lo, hi);
  return view.key(k);
}

}  // namespace ORV_TAG
}  // namespace orv
