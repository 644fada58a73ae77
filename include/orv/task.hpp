// SPDX-License-Identifier: MIT
// The entries of statistics and sorting for a type of numbers, and tasks that end with their scope:
// what a template needs of the C interface.
#pragma once

#include <orv/scalar.h>
#include <orv/sort.h>
#include <orv/ss.h>
#include <orv/error.hpp>

#include <cstdint>
#include <utility>
#include <vector>

namespace orv {

/// The C interface's entries for double or float.
template <class T>
struct entries;
#define ORV_ENTRIES(T, t, bits)                                               \
  template <>                                                                 \
  struct entries<T> {                                                         \
    static constexpr const char* name = #T;                                   \
    using word = uint##bits##_t;                                              \
    static constexpr auto new_task = __zok##t##SSNewTask;                     \
    static constexpr auto edit = __zok##t##SSEditTask;                        \
    static constexpr auto edit_quantiles = __zok##t##SSEditQuantiles;         \
    static constexpr auto basic = _zok##t##SSBasic;                           \
    static constexpr auto minmax = _zok##t##SSMinmax;                         \
    static constexpr auto quantiles = _zok##t##SSQuantiles;                   \
    static constexpr auto weighted_quantile = _zok##t##SSWMedian;             \
    static constexpr auto pooled_covariance = _zok##t##SSPooledCovariance;    \
    static constexpr auto partial_covariance = _zok##t##SSPartialCovariance;  \
    static constexpr auto robust_covariance = _zok##t##SSRobustCovariance;    \
    static constexpr auto outliers = _zok##t##SSOutliersDetection;            \
    static constexpr auto parametrize = _zok##t##SSCorParametrization;        \
    static constexpr auto mahalanobis = _zok##t##SSMahDistance;               \
    static constexpr auto stream_quantiles = _zok##t##SSStreamQuantiles;      \
    static constexpr auto missing_values_from = _zok##t##SSMissingValuesFrom; \
    static constexpr auto test_rank = __zok##t##TestCovRank;                  \
    static constexpr auto invert = __zok##t##InvCov;                          \
    static constexpr auto sort = __zok##t##QSort;                             \
    static constexpr auto sort_step = __zok##t##QSortStep;                    \
    static constexpr auto select = __zok##t##QSortSelect;                     \
    static constexpr auto radix_sort = p8_tebsSortRadixAscend_##bits##f_I;    \
  };
ORV_ENTRIES(double, d, 64)
ORV_ENTRIES(float, s, 32)
#undef ORV_ENTRIES

/// A task of the C interface, with integers of 64 bits that it keeps. Arrays stay the caller's and
/// have to last as long as it. For what `dataset` does not offer.
template <class T>
class task {
 public:
  using entry = int32_t (*)(SSTask*, uint64_t, uint64_t, const SSThreadServices*);

  /// x and weights may be null; layout is SS_ROWS or SS_COLUMNS.
  task(int64_t p, int64_t n, int64_t layout, const T* x, const T* weights = nullptr)
      : integers_{{p}, {n}, {layout}} {
    detail::check_statistics(entries<T>::new_task(&task_, integers_[0].data(), integers_[1].data(),
                                                  integers_[2].data(), x, weights, nullptr, 1),
                             "task");
  }
  ~task() { __zokSSDeleteTask(&task_); }
  task(task&& other) noexcept
      : integers_(std::move(other.integers_)), task_(std::exchange(other.task_, nullptr)) {}
  task& operator=(task&&) = delete;

  operator SSTask*() const { return task_; }

  /// Sets a parameter SS_PARAM_ to an array, of data or for results.
  task& set(int64_t parameter, const T* array) {
    detail::check_statistics(entries<T>::edit(task_, parameter, array), "task");
    return *this;
  }
  task& set(int64_t parameter, const std::vector<T>& array) { return set(parameter, array.data()); }
  /// Sets a parameter to integers, which are copied.
  task& set_integers(int64_t parameter, std::vector<int64_t> values) {
    const auto& kept = integers_.emplace_back(std::move(values));
    detail::check_statistics(__zokiSSEditTask(task_, parameter, kept.data()), "task");
    return *this;
  }
  task& set_integer(int64_t parameter, int64_t value) { return set_integers(parameter, {value}); }

  /// Calls an entry; throws under the name of `function`.
  void run(entry compute, uint64_t estimates, uint64_t method, const SSThreadServices* threads,
           const char* function) {
    detail::check_statistics(compute(task_, estimates, method, threads), function);
  }

 private:
  std::vector<std::vector<int64_t>> integers_;
  SSTask* task_ = nullptr;
};

}  // namespace orv
