// SPDX-License-Identifier: MIT
// Sorted lists of tuples, and their merging.
//
// A tuple stands for a value of the data, of which it is known between which two ranks its own
// lies. In a list of part of the data the rank of x among all is bounded by adding, for each other
// part, the rank of the last value there that is not above x, and of the next one less 1.
#pragma once

#include "../../_service/ss_task.hpp"

namespace orv {
inline namespace ORV_TAG {

using Rank = int64_t;

/// `count` tuples, ascending. Ranks have a neighbour each that spares merging a test: before the
/// first lowest rank stands 0, and after the last highest one its successor.
template <class T>
struct Tuples {
  T* value;
  Rank *lowest, *highest;
  intptr_t count;

  void end(intptr_t tuples) {
    count = tuples;
    lowest[-1] = 0;
    highest[count] = count == 0 ? 1 : highest[count - 1] + 1;
  }
};

/// Bytes of a block for `room` tuples and the neighbours' ranks of so many lists.
template <class T>
Count tuple_bytes(Count room, intptr_t lists) {
  return (room + lists) * (2 * sizeof(Rank)) + room * sizeof(T);
}

/// A list of `count` tuples, the first in a block for `room` of them.
template <class T>
Tuples<T> tuples_in(void* block, intptr_t room, intptr_t count) {
  auto* const lowest = static_cast<Rank*>(block);
  auto* const highest = lowest + room + 1;
  return {reinterpret_cast<T*>(highest + room + 1), lowest + 1, highest, count};
}

/// Sorted values as tuples of known rank: every step-th from the first on, and the last.
template <int step, class T>
void make_tuples(const T* sorted, intptr_t n, Tuples<T>* to) {
  intptr_t count = 0;
  const auto add = [&](intptr_t k) {
    to->value[count] = sorted[k];
    to->lowest[count] = to->highest[count] = k + 1;
    ++count;
  };
  for (intptr_t k = 0; k < n; k += step) add(k);
  if (n > 0 && (n - 1) % step != 0) add(n - 1);
  to->end(count);
}

/// Merges two lists; among equal values those of `a` come first. Of the merged tuples every step-th
/// from the first on is kept, and the last: without it, ranks above the last but one would be
/// answered from further away than those between.
template <int step, class T>
void merge(const Tuples<T>& a, const Tuples<T>& b, Tuples<T>* to) {
  intptr_t i = 0, j = 0, count = 0;
  const auto pass = [&](bool from_b) {
    i += !from_b;
    j += from_b;
  };
  const auto keep = [&](bool from_b) {
    to->value[count] = from_b ? b.value[j] : a.value[i];
    to->highest[count] = a.highest[i] + b.highest[j] - 1;
    pass(from_b);
    to->lowest[count] = a.lowest[i - 1] + b.lowest[j - 1];
    ++count;
  };
  // While both lists have `step` tuples left, no end is in sight.
  for (;;) {
    const intptr_t left_a = a.count - i, left_b = b.count - j;
    intptr_t steps = (left_a < left_b ? left_a : left_b) / step;
    if (steps == 0) break;
    for (; steps > 0; --steps) {
      keep(b.value[j] < a.value[i]);
      for (int k = 1; k < step; ++k) pass(b.value[j] < a.value[i]);
    }
  }
  const intptr_t all = a.count + b.count;
  for (intptr_t k = i + j; k < all; ++k) {
    const bool from_b = i == a.count || (j < b.count && b.value[j] < a.value[i]);
    if (k % step == 0 || k == all - 1) {
      keep(from_b);
    } else {
      pass(from_b);
    }
  }
  to->end(count);
}

}  // namespace ORV_TAG
}  // namespace orv
