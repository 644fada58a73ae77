// SPDX-License-Identifier: MIT
// Sorts a block of values. The order of equal ones is open, and one with NaNs has no useful order.
#pragma once

#include <orv/sort.h>
#include <string.h>

#include "../../../zok_sub_kernel/_math/qsort.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Radix sort of doubles by the upper halves of their bits alone, which takes half the passes. What
/// is left is put in order by insertion: as a rule few neighbours agree in their upper halves.
class UpperHalfSort {
 public:
  static void sort(double* a, double* scratch, int32_t n) {
    int32_t place[3][values] = {};
    for (int32_t i = 0; i < n; ++i) {
      const uint32_t key = upper_key(a + i);
      ++place[0][digit<0>(key)], ++place[1][digit<1>(key)], ++place[2][digit<2>(key)];
    }
    for (auto& counts : place) {
      int32_t sum = 0;
      for (int32_t& count : counts) {
        const int32_t first = sum;
        sum += count;
        count = first;
      }
    }
    scatter<0>(a, scratch, n, place[0]);
    scatter<1>(scratch, a, n, place[1]);
    scatter<2>(a, scratch, n, place[2]);
    if (!insert_all(scratch, a, n)) orv::sort<intptr_t>(Keys<double>(a), n);
  }

 private:
  static constexpr int32_t values = 2048;  // of a digit; the upper half has 11, 11 and 10 bits

  /// Unsigned, in the order of the numbers.
  static uint32_t upper_key(const double* x) {
    uint64_t bits;
    memcpy(&bits, x, sizeof bits);
    const auto upper = static_cast<int32_t>(bits >> 32);
    return static_cast<uint32_t>(upper ^ (upper >> 31 | INT32_MIN));
  }

  template <int32_t d>
  static uint32_t digit(uint32_t key) {
    return key >> 11 * d & (values - 1);
  }

  template <int32_t d>
  static void scatter(const double* from, double* to, int32_t n, int32_t* place) {
    for (int32_t i = 0; i < n; ++i) to[place[digit<d>(upper_key(from + i))]++] = from[i];
  }

  /// Gives up, all values copied, where that takes long.
  static bool insert_all(const double* from, double* to, int32_t n) {
    int64_t moves_left = int64_t{4} * n;
    for (int32_t i = 0; i < n; ++i) {
      const double x = from[i];
      int32_t k = i;
      for (; k > 0 && to[k - 1] > x; --k) to[k] = to[k - 1];
      to[k] = x;
      moves_left -= i - k;
      if (moves_left < 0) {
        memcpy(to + i + 1, from + i + 1, static_cast<size_t>(n - i - 1) * sizeof x);
        return false;
      }
    }
    return true;
  }
};

inline void sort_by_digits(double* a, double* scratch, int32_t n) {
  UpperHalfSort::sort(a, scratch, n);
}
inline void sort_by_digits(float* a, float* scratch, int32_t n) {
  p8_tebsSortRadixAscend_32f_I(a, scratch, n);
}

/// Scratch has room for as many values.
template <class T>
void sort_values(T* a, T* scratch, int64_t n) {
  constexpr int64_t worth_counting_digits = 1000;
  if (n < worth_counting_digits || n > INT32_MAX) {
    sort<intptr_t>(Keys<T>(a), static_cast<intptr_t>(n));
  } else {
    sort_by_digits(a, scratch, static_cast<int32_t>(n));
  }
}

}  // namespace ORV_TAG
}  // namespace orv
