// SPDX-License-Identifier: MIT
// The data of a task, for the entries that outlier detection calls.
#pragma once

#include "../../_service/ss_task.hpp"
#include "../mah_distance/centered.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct Observed {
  int64_t p, n, layout;
  const T* x;
  const T* prior;  // weights, or null

  explicit Observed(const SSTask& task)
      : p(integer(task, task.dimension)),
        n(integer(task, task.observation_count)),
        layout(integer(task, task.observation_storage)),
        x(static_cast<const T*>(task.observations)),
        prior(static_cast<const T*>(task.weights)) {}

  /// For an entry, with integers of this; without weights.
  SSTask task() const {
    SSTask record = {};
    record.int_is_64 = 1;
    record.dimension = &p;
    record.observation_count = &n;
    record.observation_storage = &layout;
    record.observations = x;
    return record;
  }
  Observations<T> observations() const {
    return {x, static_cast<intptr_t>(p), static_cast<intptr_t>(n), layout == SS_ROWS};
  }
  T weight(intptr_t i) const { return prior != nullptr ? prior[i] : T{1}; }

  T operator()(intptr_t i, intptr_t j) const {
    return x[layout == SS_ROWS ? j * static_cast<intptr_t>(n) + i
                               : i * static_cast<intptr_t>(p) + j];
  }
  bool is_finite(intptr_t i) const {
    intptr_t j = 0;
    while (j < p && isfinite((*this)(i, j))) ++j;
    return j == p;
  }
};

/// Whether all of n numbers are finite: others differ from themselves.
template <class T>
bool all_finite(const T* x, intptr_t n) {
  using L = Lanes<T>;
  auto zeros = L::all(0);
  intptr_t i = 0;
  for (; i + L::count <= n; i += L::count) zeros += L::load(x + i) - L::load(x + i);
  T zero = 0;
  for (int k = 0; k < L::count; ++k) zero += zeros[k];
  for (; i < n; ++i) zero += x[i] - x[i];
  return zero == 0;
}

}  // namespace ORV_TAG
}  // namespace orv
