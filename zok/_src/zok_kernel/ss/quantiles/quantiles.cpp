// SPDX-License-Identifier: MIT
// Quantiles and sorted data: one variable is one item of work.
//
// The quantile of order q of sorted data X[0 .. n) lies at f = (n - 1) q. With k the whole part of
// f and t the rest it is (1 - t) X[k] + t X[k + 1] (definition 7 of Hyndman and Fan 1996).
#include <orv/sort.h>
#include <string.h>

#include "../../../zok_sub_kernel/_service/lanes.hpp"
#include "../../_service/ss_task.hpp"

using namespace orv;

namespace {

template <class T>
struct Sorters;

template <>
struct Sorters<double> {
  static constexpr auto radix = p8_tebsSortRadixAscend_64f_I;
  static constexpr auto step = __zokdQSortStep;
  static constexpr auto select = __zokdQSortSelect;
};

template <>
struct Sorters<float> {
  static constexpr auto radix = p8_tebsSortRadixAscend_32f_I;
  static constexpr auto step = __zoksQSortStep;
  static constexpr auto select = __zoksQSortSelect;
};

template <class T>
struct Arguments {
  intptr_t p, n;
  const int32_t* variables;  // selected
  bool order_stats_asked, quantiles_asked;
  bool rows, order_stats_rows;
  const T* observations;
  T *order_stats, *quantiles;
  const T* quant_orders;
  intptr_t quant_order_count;
  T* work;  // n elements for each thread
};

/// Every stride-th element.
template <class T>
struct Column {
  T* a;
  intptr_t stride;
  T& operator[](intptr_t i) const { return a[i * stride]; }
};

template <class T>
void copy(Column<const T> from, Column<T> to, intptr_t n) {
  if (from.stride == 1 && to.stride == 1) {
    memcpy(to.a, from.a, static_cast<size_t>(n) * sizeof(T));
  } else {
    for (intptr_t i = 0; i < n; ++i) to[i] = from[i];
  }
}

/// Where the quantile of order q lies. A float may take n - 1 for n.
template <class T>
struct Place {
  Place(T q, intptr_t n) {
    const T f = static_cast<T>(n - 1) * q;
    rank = static_cast<intptr_t>(f);
    if (rank > n - 1) rank = n - 1;
    fraction = f - static_cast<T>(rank);
  }
  /// `next` may be infinite, and has no part in a quantile that falls on x.
  T between(T x, T next) const { return fraction == 0 ? x : (1 - fraction) * x + fraction * next; }

  intptr_t rank;
  T fraction;
};

template <class T>
T least(const T* a, intptr_t n) {
  using Vector = typename Lanes<T>::Vector;
  constexpr intptr_t width = Lanes<T>::count, vectors = 4;
  T x = a[0];
  intptr_t i = 0;
  if (n >= vectors * width) {
    Vector m[vectors];
    for (auto& v : m) v = Lanes<T>::all(x);
    for (; i + vectors * width <= n; i += vectors * width) {
      for (intptr_t k = 0; k < vectors; ++k) {
        const Vector v = Lanes<T>::load(a + i + k * width);
        m[k] = v < m[k] ? v : m[k];
      }
    }
    for (const auto& v : m) {
      for (intptr_t k = 0; k < width; ++k) x = v[k] < x ? v[k] : x;
    }
  }
  for (; i < n; ++i) x = a[i] < x ? a[i] : x;
  return x;
}

/// Quantiles of one variable, whose data are moved about.
template <class T>
class Quantiles {
 public:
  Quantiles(const Arguments<T>& args, T* a, T* results)
      : n_(args.n),
        count_(args.quant_order_count),
        orders_(args.quant_orders),
        a_(a),
        results_(results) {}

  void compute() const {
    if (ascending()) {
      select_between(0, count_, 0, n_);
      interpolate();
    } else {
      for (intptr_t i = 0; i < count_; ++i) compute(i);
    }
  }

 private:
  Place<T> place(intptr_t i) const { return {orders_[i], n_}; }

  bool ascending() const {
    for (intptr_t i = 1; i < count_; ++i) {
      if (orders_[i] < orders_[i - 1]) return false;
    }
    return true;
  }

  /// The element of rank k of all, known to lie in [lo, hi), moved there.
  T select(intptr_t k, intptr_t lo, intptr_t hi) const {
    return Sorters<T>::select(static_cast<int32_t>(hi - lo), a_ + lo, static_cast<int32_t>(k - lo));
  }

  void compute(intptr_t i) const {
    const Place<T> at = place(i);
    const T x = select(at.rank, 0, n_);
    results_[i] = at.between(x, at.rank == n_ - 1 ? x : least(a_ + at.rank + 1, n_ - 1 - at.rank));
  }

  /// Moves the ranks of ascending orders, first to end - 1, to their places, where all elements
  /// outside [lo, hi) are in place already. What the middle one splits serves the others.
  void select_between(intptr_t first, intptr_t end, intptr_t lo, intptr_t hi) const {
    if (first == end) return;
    const intptr_t middle = (first + end) / 2, k = place(middle).rank;
    if (lo <= k && k < hi) select(k, lo, hi);
    select_between(first, middle, lo, k < hi ? k : hi);
    select_between(middle + 1, end, lo <= k ? k + 1 : lo, hi);
  }

  /// Results for selected ranks. An element's successor is the least up to the next in place.
  void interpolate() const {
    T next = 0;
    intptr_t done = n_;
    for (intptr_t i = count_; i-- > 0;) {
      const Place<T> at = place(i);
      const intptr_t k = at.rank, last = done < n_ ? done : n_ - 1;
      if (k != done) next = k < last ? least(a_ + k + 1, last - k) : a_[k];
      done = k;
      results_[i] = at.between(a_[k], next);
    }
  }

  intptr_t n_, count_;
  const T* orders_;
  T* a_;
  T* results_;
};

/// Sorts one variable into its place among the results, and reads the quantiles there.
template <class T>
void sort_variable(const Arguments<T>& a, Column<const T> x, intptr_t item, T* scratch,
                   T* quantiles) {
  const Column<T> sorted = a.order_stats_rows ? Column<T>{a.order_stats + item * a.n, 1}
                                              : Column<T>{a.order_stats + item, a.p};
  if (sorted.stride == 1) {
    copy(x, sorted, a.n);
    Sorters<T>::radix(sorted.a, scratch, static_cast<int32_t>(a.n));
  } else {  // quicksort needs no scratch: it sorts there, where elements are neighbours
    copy(x, {scratch, 1}, a.n);
    Sorters<T>::step(static_cast<int32_t>(a.n), scratch, 1);
    copy({scratch, 1}, sorted, a.n);
  }
  if (!a.quantiles_asked) return;
  for (intptr_t i = 0; i < a.quant_order_count; ++i) {
    const Place<T> at(a.quant_orders[i], a.n);
    const intptr_t next = at.rank + 1 < a.n ? at.rank + 1 : a.n - 1;
    quantiles[i] = at.between(sorted[at.rank], sorted[next]);
  }
}

/// Results of selected variables stand one after another: the item decides their place.
template <class T>
void _vSSQuantilesThreader(int32_t item, int32_t thread, int32_t, void* args) {
  const auto& a = *static_cast<const Arguments<T>*>(args);
  const intptr_t j = a.variables[item];
  const Column<const T> x = a.rows ? Column<const T>{a.observations + j * a.n, 1}
                                   : Column<const T>{a.observations + j, a.p};
  T* const own = a.work + thread * a.n;
  T* const quantiles = a.quantiles_asked ? a.quantiles + item * a.quant_order_count : nullptr;
  if (a.order_stats_asked) return sort_variable(a, x, item, own, quantiles);
  copy(x, {own, 1}, a.n);
  Quantiles<T>(a, own, quantiles).compute();
}

template <class T>
int32_t check_quantiles(const SSTask& task) {
  if (task.quantiles == nullptr) return SS_NULL_QUANTILES;
  if (task.quant_orders == nullptr) return SS_NULL_QUANT_ORDERS;
  if (task.quant_order_count == nullptr) return SS_BAD_QUANT_ORDERS;
  const int64_t count = integer(task, task.quant_order_count);
  if (count < 0) return SS_BAD_QUANT_ORDERS;
  const auto* orders = static_cast<const T*>(task.quant_orders);
  for (intptr_t i = 0; i < count; ++i) {
    if (!(orders[i] >= 0 && orders[i] <= 1)) return SS_BAD_QUANT_ORDERS;
  }
  return SS_OK;
}

int32_t check_order_stats(const SSTask& task) {
  if (task.order_stats == nullptr) return SS_NULL_ORDER_STATS;
  if (task.order_stats_storage == nullptr) return SS_NULL_STORAGE;
  return is_layout(integer(task, task.order_stats_storage)) ? SS_OK : SS_BAD_STORAGE;
}

/// Threads whose work fits in 10 MiB, but at least one.
template <class T>
intptr_t thread_count(intptr_t p, intptr_t n, int32_t usable) {
  intptr_t count = 0xa00000 / static_cast<intptr_t>(sizeof(T)) / n;
  if (count < 1) count = 1;
  if (count > usable) count = usable;
  return count > p ? p : count;
}

/// One block: `elements` of T, then p integers.
template <class T>
T* allocate_work(Count elements, intptr_t p) {
  return reinterpret_cast<T*>(allocate<char>(elements * sizeof(T) + Count(p) * sizeof(int32_t)));
}

template <class T>
int32_t quantiles(const SSTask& task, uint64_t estimates, uint64_t method,
                  const SSThreadServices& services) {
  if (!is_layout(integer(task, task.observation_storage))) return SS_BAD_STORAGE;
  Arguments<T> a = {};
  a.quantiles_asked = (estimates & SS_EST_QUANTILES) != 0;
  a.order_stats_asked = (estimates & SS_EST_ORDER_STATS) != 0;
  int32_t status = a.quantiles_asked ? check_quantiles<T>(task) : SS_OK;
  if (status == SS_OK && a.order_stats_asked) status = check_order_stats(task);
  if (status != SS_OK) return status;
  if ((method & SS_METHOD_FAST) == 0) return SS_BAD_METHOD;
  status = check_data(task, INT32_MAX);  // so far sorters and items count
  if (status != SS_OK) return status;

  a.p = static_cast<intptr_t>(integer(task, task.dimension));
  a.n = static_cast<intptr_t>(integer(task, task.observation_count));
  a.rows = is_rows(integer(task, task.observation_storage));
  a.observations = static_cast<const T*>(task.observations);
  if (a.order_stats_asked) {
    a.order_stats_rows = is_rows(integer(task, task.order_stats_storage));
    a.order_stats = static_cast<T*>(task.order_stats);
  }
  if (a.quantiles_asked) {
    a.quantiles = static_cast<T*>(task.quantiles);
    a.quant_orders = static_cast<const T*>(task.quant_orders);
    a.quant_order_count = static_cast<intptr_t>(integer(task, task.quant_order_count));
  }

  const intptr_t threads = thread_count<T>(a.p, a.n, usable_threads(services));
  a.work = allocate_work<T>(Count(threads) * a.n, a.p);
  int32_t count = 0;
  if (a.work != nullptr) {  // without memory nothing is computed, and nobody is told
    auto* const variables = reinterpret_cast<int32_t*>(a.work + threads * a.n);
    const Selection selected(task);
    for (intptr_t j = 0; j < a.p; ++j) {
      if (selected[j]) variables[count++] = static_cast<int32_t>(j);
    }
    a.variables = variables;
  }
  services.run_items(count, static_cast<int32_t>(threads), &a, _vSSQuantilesThreader<T>);
  orv_serv_deallocate(a.work);
  return SS_OK;
}

}  // namespace

int32_t _zokdSSQuantiles(SSTask* task, uint64_t estimates, uint64_t method,
                         const SSThreadServices* services) {
  return quantiles<double>(*task, estimates, method, *services);
}

int32_t _zoksSSQuantiles(SSTask* task, uint64_t estimates, uint64_t method,
                         const SSThreadServices* services) {
  return quantiles<float>(*task, estimates, method, *services);
}
