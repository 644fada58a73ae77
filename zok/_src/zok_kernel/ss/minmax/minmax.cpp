// SPDX-License-Identifier: MIT
// The least and the largest value of each variable.
//
// Both layouts are one stream in which element i belongs to variable i mod p; a row is a stream of
// one variable. Blocks of a few observations are compared, element by element, with a running block
// of the same shape, which is folded into one value for each variable at the end.
#include <string.h>

#include "../../../zok_sub_kernel/_service/lanes.hpp"
#include "../../_service/ss_task.hpp"

using namespace orv;

namespace {

/// The value found so far stays where the new one is equal to it, and where either is a NaN. The
/// vector instruction gives its second operand in these cases.
struct Larger {
  template <class T>
  static bool better(T x, T found) {
    return x > found;
  }
  static __m256d best(__m256d x, __m256d found) { return _mm256_max_pd(x, found); }
  static __m256 best(__m256 x, __m256 found) { return _mm256_max_ps(x, found); }
};

struct Smaller {
  template <class T>
  static bool better(T x, T found) {
    return x < found;
  }
  static __m256d best(__m256d x, __m256d found) { return _mm256_min_pd(x, found); }
  static __m256 best(__m256 x, __m256 found) { return _mm256_min_ps(x, found); }
};

/// A running block stays in the nearest cache, and so does the block of data beside it.
constexpr intptr_t block_bytes = 8192;
/// Vectors enough to hide the way of a stored value to its next load.
constexpr intptr_t enough_vectors = 16;

/// Observations in a block: of whole vectors, or 1 where p is too large for that.
template <class T>
intptr_t observations_in_block(intptr_t p) {
  constexpr intptr_t bytes = sizeof(T), width = Lanes<T>::count;
  if (p > block_bytes / (bytes * width)) return 1;
  return width * ((enough_vectors + p - 1) / p);
}

template <class Order, class T>
void update(T* found, const T* x) {
  if (Order::better(*x, *found)) *found = *x;
}

template <class Order, class T>
void update_vector(T* found, typename Lanes<T>::Vector x) {
  Lanes<T>::store(found, Order::best(x, Lanes<T>::load(found)));
}

/// Compares `count` elements with as many running ones, of either search if it is on.
template <class T>
void update(T* low, T* high, const T* x, intptr_t count) {
  intptr_t i = 0;
  for (; i + Lanes<T>::count <= count; i += Lanes<T>::count) {
    const auto v = Lanes<T>::load(x + i);
    if (low != nullptr) update_vector<Smaller>(low + i, v);
    if (high != nullptr) update_vector<Larger>(high + i, v);
  }
  for (; i < count; ++i) {
    if (low != nullptr) update<Smaller>(low + i, x + i);
    if (high != nullptr) update<Larger>(high + i, x + i);
  }
}

/// The best of `count` running values for one variable. Equal values have the same bits but for
/// zeros of both signs, of which the first in the data counts.
template <class Order, class T>
T fold(T start, const T* running, intptr_t count, const T* x, intptr_t n, intptr_t p) {
  T best = start;
  bool both_zeros = false;
  for (intptr_t i = 0; i < count; ++i) {
    const T value = running[i * p];
    if (Order::better(value, best)) {
      best = value;
      both_zeros = false;
    } else if (value == 0 && best == 0) {
      both_zeros = both_zeros || __builtin_signbit(value) != __builtin_signbit(best);
    }
  }
  if (!both_zeros) return best;
  while (n-- > 0 && *x != 0) x += p;
  return *x;
}

/// Searches n observations of p variables, for one result or for both.
template <class T>
void search(const T* x, intptr_t n, intptr_t p, T* minimum, T* maximum) {
  const intptr_t together = observations_in_block<T>(p);
  alignas(32) T running_minimum[block_bytes / sizeof(T)], running_maximum[block_bytes / sizeof(T)];
  T* const low = together > 1 && minimum != nullptr ? running_minimum : minimum;
  T* const high = together > 1 && maximum != nullptr ? running_maximum : maximum;
  const auto each = [&](T* result, T* running, auto f) {
    if (result == nullptr || together == 1) return;
    for (intptr_t j = 0; j < p; ++j) f(j, result, running + j);
  };
  const auto begin = [&](intptr_t j, const T* result, T* running) {
    for (intptr_t i = 0; i < together; ++i) running[i * p] = result[j];
  };
  each(minimum, low, begin);
  each(maximum, high, begin);
  for (intptr_t i = 0; i < n; i += together) {
    const intptr_t count = (n - i < together ? n - i : together) * p;
    update(low, high, x + i * p, count);
  }
  each(minimum, low, [&](intptr_t j, T* result, const T* running) {
    result[j] = fold<Smaller>(result[j], running, together, x + j, n, p);
  });
  each(maximum, high, [&](intptr_t j, T* result, const T* running) {
    result[j] = fold<Larger>(result[j], running, together, x + j, n, p);
  });
}

/// The variables that are not selected take part in the search, in a copy of the results.
template <class T>
int32_t search_copies(const T* x, intptr_t n, intptr_t p, const Selection& selected,
                      T* const (&results)[2]) {
  T* const scratch = allocate<T>(2 * Count(p));
  if (scratch == nullptr) return SS_NO_MEMORY;
  T* copies[2] = {};
  for (int r = 0; r < 2; ++r) {
    if (results[r] == nullptr) continue;
    copies[r] = scratch + r * p;
    memcpy(copies[r], results[r], static_cast<size_t>(p) * sizeof(T));
  }
  search(x, n, p, copies[0], copies[1]);
  for (int r = 0; r < 2; ++r) {
    for (intptr_t j = 0; results[r] != nullptr && j < p; ++j) {
      if (selected[j]) results[r][j] = copies[r][j];
    }
  }
  orv_serv_deallocate(scratch);
  return SS_OK;
}

template <class T>
int32_t minmax(const SSTask& task, uint64_t estimates, uint64_t method) {
  const int64_t layout = integer(task, task.observation_storage);
  if (!is_layout(layout)) return SS_BAD_STORAGE;
  const bool low = (estimates & SS_EST_MIN) != 0, high = (estimates & SS_EST_MAX) != 0;
  if (low && task.minimum == nullptr) return SS_NULL_MINIMUM;
  if (high && task.maximum == nullptr) return SS_NULL_MAXIMUM;
  if ((method & (SS_METHOD_FAST | SS_METHOD_ONE_PASS)) == 0) return SS_BAD_METHOD;
  if (const int32_t status = check_data(task); status != SS_OK) return status;
  if (!low && !high) return SS_OK;

  const auto p = static_cast<intptr_t>(integer(task, task.dimension));
  const auto n = static_cast<intptr_t>(integer(task, task.observation_count));
  const auto* x = static_cast<const T*>(task.observations);
  T* const results[2] = {low ? static_cast<T*>(task.minimum) : nullptr,
                         high ? static_cast<T*>(task.maximum) : nullptr};
  const Selection selected(task);
  if (is_rows(layout)) {
    for (intptr_t j = 0; j < p; ++j) {
      if (selected[j]) {
        search(x + j * n, n, 1, low ? results[0] + j : nullptr, high ? results[1] + j : nullptr);
      }
    }
    return SS_OK;
  }
  if (!selected.all()) return search_copies(x, n, p, selected, results);
  search(x, n, p, results[0], results[1]);
  return SS_OK;
}

}  // namespace

int32_t _zokdSSMinmax(SSTask* task, uint64_t estimates, uint64_t method, const SSThreadServices*) {
  return minmax<double>(*task, estimates, method);
}

int32_t _zoksSSMinmax(SSTask* task, uint64_t estimates, uint64_t method, const SSThreadServices*) {
  return minmax<float>(*task, estimates, method);
}
