// SPDX-License-Identifier: MIT
// The exported sorts and selections. Bounds of waiting parts are kept in the elements' own type.
#include "qsort.hpp"

#include <orv/sort.h>

using namespace orv;

namespace {

/// Every stride-th key. Parts that fit are sorted in a local copy, where neighbours are close.
template <class T>
class SpacedKeys {
 public:
  using Key = T;
  static constexpr intptr_t small = 4096;

  SpacedKeys(T* a, intptr_t stride) : a_(a), stride_(stride) {}

  T key(intptr_t i) const { return a_[i * stride_]; }

  void exchange(intptr_t i, intptr_t j) const {
    const T x = key(i);
    a_[i * stride_] = key(j);
    a_[j * stride_] = x;
  }

  void order(intptr_t i, intptr_t j) const {
    if (key(i) > key(j)) exchange(i, j);
  }

  Stops stops(intptr_t i, intptr_t count, T pivot) const {
    Stops stops = {0, 0};
    for (intptr_t k = 0; k < count; ++k) {
      stops.up |= Mask{!(key(i + k) < pivot)} << k;
      stops.down |= Mask{!(key(i + k) > pivot)} << k;
    }
    return stops;
  }

  void finish(intptr_t lo, intptr_t hi) const {
    T copy[small];
    const intptr_t n = hi - lo + 1;
    for (intptr_t i = 0; i < n; ++i) copy[i] = key(lo + i);
    sort<T>(Keys<T>(copy), n);
    for (intptr_t i = 0; i < n; ++i) a_[(lo + i) * stride_] = copy[i];
  }

 private:
  T* a_;
  intptr_t stride_;
};

void sort_doubles(auto view, intptr_t n) { sort<double>(view, n); }

/// Floats don't count beyond 2^24.
void sort_floats(auto view, intptr_t n) {
  n <= 1 << 24 ? sort<float>(view, n) : sort<double>(view, n);
}

}  // namespace

void __zokdQSort(int32_t n, double* a) { sort_doubles(Keys<double>(a), n); }

void __zoksQSort(int32_t n, float* a) { sort_floats(Keys<float>(a), n); }

void __zokdQSortStep(int32_t n, double* a, int32_t stride) {
  sort_doubles(SpacedKeys<double>(a, stride), n);
}

void __zoksQSortStep(int32_t n, float* a, int32_t stride) {
  sort_floats(SpacedKeys<float>(a, stride), n);
}

double __zokdQSortSelect(int32_t n, double* a, int32_t k) { return select(Keys<double>(a), n, k); }

float __zoksQSortSelect(int32_t n, float* a, int32_t k) { return select(Keys<float>(a), n, k); }
