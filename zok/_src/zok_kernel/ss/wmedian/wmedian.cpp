// SPDX-License-Identifier: MIT
// The weighted quantile of each variable, the median as a rule. Sorted data weigh up to the target,
// q times the sum of weights; where they pass it between two observations, the result lies between.
#include <math.h>

#include "../../../zok_sub_kernel/_math/qsort.hpp"
#include "../../_service/ss_task.hpp"

using namespace orv;

namespace {

/// Neighbouring keys, and a map whose elements move with them.
template <class T>
class MappedKeys {
 public:
  using Key = T;
  static constexpr intptr_t small = 7;

  MappedKeys(T* keys, T* map) : keys_(keys), map_(map) {}

  T key(intptr_t i) const { return keys_.key(i); }
  Stops stops(intptr_t i, intptr_t count, T pivot) const { return keys_.stops(i, count, pivot); }

  void exchange(intptr_t i, intptr_t j) const {
    keys_.exchange(i, j);
    map_.exchange(i, j);
  }
  void order(intptr_t i, intptr_t j) const {
    if (key(i) > key(j)) exchange(i, j);
  }

  void finish(intptr_t lo, intptr_t hi) const {
    for (intptr_t i = lo + 1; i <= hi; ++i) {
      for (intptr_t k = i; k > lo && key(k - 1) > key(k); --k) exchange(k - 1, k);
    }
  }

 private:
  Keys<T> keys_, map_;
};

template <class T>
void _vSSQuickMapSort(intptr_t n, T* keys, T* map) {
  sort<intptr_t>(MappedKeys<T>(keys, map), n);
}

/// The part t of the way from u to v, where either may be infinite.
template <class T>
T between(T u, T v, T t) {
  const T way = v - u;
  if (isfinite(way)) return u + t * way;
  return t == 0 ? u : t == 1 ? v : (1 - t) * u + t * v;
}

/// The quantile of sorted keys, for weights that sum up to `total`.
template <class T>
T weighted_quantile(intptr_t n, const T* keys, const T* weights, T total, T q) {
  const auto weighty_below = [&](intptr_t k) {
    while (--k > 0 && !(weights[k] > 0)) continue;
    return k;
  };
  const T target = total * q;
  T sum = 0;
  intptr_t k = 0;
  while (k < n && !((sum += weights[k]) >= target)) ++k;
  if (k == n) return keys[weighty_below(n)];  // rounding kept the sum below the target

  const T v = keys[k];
  if (sum == target) {
    if (n % 2 != 0 || k == n - 1) return v;
    intptr_t next = k + 1;
    while (next < n - 1 && !(weights[next] > 0)) ++next;
    return (v + keys[next]) * T(0.5);
  }
  const T below = sum - weights[k];
  if (!(below > 0)) return v;
  const T u = keys[weighty_below(k)];
  if (n % 2 != 0 && below == (total - weights[k]) * q) return v;
  return between(u, v, (target - below) / (sum - below));
}

template <class T>
int32_t _vSSWQuantile(intptr_t p, intptr_t n, int64_t layout, const T* x, const T* weights, T q,
                      T* results) {
  T total = 0;
  for (intptr_t i = 0; i < n; ++i) total += weights[i];
  T* const keys = allocate<T>(n);
  T* const map = allocate<T>(n);
  if (keys == nullptr || map == nullptr) {
    orv_serv_deallocate(keys);
    orv_serv_deallocate(map);
    return SS_NO_MEMORY;
  }
  const bool rows = layout == SS_ROWS;
  for (intptr_t j = 0; j < p; ++j) {
    const T* first = rows ? x + j * n : x + j;
    for (intptr_t i = 0; i < n; ++i) {
      keys[i] = first[rows ? i : i * p];
      map[i] = weights[i];
    }
    _vSSQuickMapSort(n, keys, map);
    results[j] = weighted_quantile(n, keys, map, total, q);
  }
  orv_serv_deallocate(keys);
  orv_serv_deallocate(map);
  return SS_OK;
}

template <class T>
int32_t weighted_quantiles(const SSTask& task) {
  if (const int32_t status = check_data(task); status != SS_OK) return status;
  return _vSSWQuantile(static_cast<intptr_t>(integer(task, task.dimension)),
                       static_cast<intptr_t>(integer(task, task.observation_count)),
                       integer(task, task.observation_storage),
                       static_cast<const T*>(task.observations),
                       static_cast<const T*>(task.weights),
                       *static_cast<const T*>(task.quant_orders), static_cast<T*>(task.quantiles));
}

}  // namespace

int32_t _zokdSSWMedian(SSTask* task, uint64_t, uint64_t, const SSThreadServices*) {
  return weighted_quantiles<double>(*task);
}

int32_t _zoksSSWMedian(SSTask* task, uint64_t, uint64_t, const SSThreadServices*) {
  return weighted_quantiles<float>(*task);
}
