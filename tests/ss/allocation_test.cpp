// What tasks and statistics allocate, and what is left when it fails.
#include <functional>

#include "serv/failing_allocator.hpp"
#include "support.hpp"

using namespace orv_test;

namespace {

/// Lets each allocation of a call fail in turn, which it must report and leave nothing behind, and
/// tells how many there are.
int reported_failures(const std::function<int32_t()>& run) {
  run();  // OpenMP asks once, for as long as the thread lives
  for (int failing = 1;; ++failing) {
    watch_allocations(failing);
    const int32_t status = run();
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, failing <= seen.asked ? SS_NO_MEMORY : SS_OK) << failing;
    EXPECT_EQ(seen.open, 0) << failing;
    if (failing > seen.asked) return seen.asked;
  }
}

TEST(Allocation, TaskIsNullWhenThereIsNoMemory) {
  const int32_t p = 1;
  SSTask other, *task = &other;
  watch_allocations(1);
  const int32_t status = __zokdSSNewTask(&task, &p, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
  const Allocations seen = seen_allocations();
  EXPECT_EQ(status, SS_NO_MEMORY);
  EXPECT_EQ(task, nullptr);
  EXPECT_EQ(seen.asked, 1);
}

/// Two threads, one after the other on this one.
const SSThreadServices* two_turns() {
  static SSThreadServices table = *orv_threads_serial();
  table.max_threads = [] { return int32_t{2}; };
  table.run_threads = [](int32_t threads, void* args, SSItemFunction function) {
    for (int32_t t = 0; t < threads; ++t) function(t, 0, threads, args);
  };
  return &table;
}

template <class T>
class StatisticsAllocation : public testing::Test {};
TYPED_TEST_SUITE(StatisticsAllocation, Precisions);

TYPED_TEST(StatisticsAllocation, Basic) {
  using T = TypeParam;
  constexpr int p = 3, n = 2500;
  const std::vector<T> x(p * n, 1), w(n, 1);
  std::vector<T> mean(p), raw2(p), cov(p * p);
  for (int way = 0; way < 8; ++way) {
    SCOPED_TRACE(way);
    Choices choose{way};
    const bool weighted = choose(2), masked = choose(2), fast = choose(2);
    Task<T> task(p, n, SS_ROWS, x.data());
    task.set(SS_PARAM_MEAN, mean).set(SS_PARAM_RAW_MOMENT_2, raw2).set(SS_PARAM_COV, cov);
    task.set(SS_PARAM_COV_STORAGE, {SS_MATRIX_LOWER_PACKED});
    if (weighted) task.set(SS_PARAM_WEIGHTS, w);
    if (masked) task.set(SS_PARAM_VARIABLE_MASK, {1, 0, 1});
    const int allocations = reported_failures([&] {
      return Entries<T>::basic(task, SS_EST_RAW2 | SS_EST_COV,
                               fast ? SS_METHOD_FAST : SS_METHOD_ONE_PASS, two_turns());
    });
    // Sums, matrix, threads; copies under a mask; scaled data of each thread.
    EXPECT_GE(allocations, 3 + masked + (weighted && fast ? 2 : 0));
  }
}

TYPED_TEST(StatisticsAllocation, WeightedQuantile) {
  using T = TypeParam;
  const T x[] = {3, 1, 2}, weights[] = {1, 1, 1}, median = T(0.5);
  T result;
  Task<T> task(1, 3, SS_COLUMNS, x);
  task.set(SS_PARAM_WEIGHTS, weights)
      .set(SS_PARAM_QUANT_ORDERS, &median)
      .set(SS_PARAM_QUANTILES, &result);
  EXPECT_EQ(reported_failures([&] {
              result = -1;
              const int32_t status = Entries<T>::weighted_median(task, 0, 0, nullptr);
              EXPECT_EQ(result, status == SS_OK ? 2 : -1);
              return status;
            }),
            2);
}

// Without memory these report nothing, and compute nothing.
TYPED_TEST(StatisticsAllocation, Quantiles) {
  using T = TypeParam;
  const T x[] = {3, 5, 1, 6, 2, 4}, median = T(0.5);
  for (const int failing : {0, 1}) {
    T quantiles[] = {-1, -1}, sorted[] = {-1, -1, -1, -1, -1, -1};
    Task<T> task(2, 3, SS_COLUMNS, x);
    task.set(SS_PARAM_QUANT_ORDER_COUNT, {1})
        .set(SS_PARAM_QUANT_ORDERS, &median)
        .set(SS_PARAM_QUANTILES, quantiles)
        .set(SS_PARAM_ORDER_STATS, sorted)
        .set(SS_PARAM_ORDER_STATS_STORAGE, {SS_COLUMNS});
    watch_allocations(failing);
    const int32_t status = Entries<T>::quantiles(task, SS_EST_QUANTILES | SS_EST_ORDER_STATS,
                                                 SS_METHOD_FAST, orv_threads_serial());
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, SS_OK);
    EXPECT_EQ(seen.asked, 1);
    EXPECT_EQ(seen.bytes, 3 * sizeof(T) + 2 * sizeof(int32_t));
    EXPECT_EQ(seen.open, 0);
    EXPECT_EQ(quantiles[0], failing == 0 ? 2 : -1);
    EXPECT_EQ(quantiles[1], failing == 0 ? 5 : -1);
    EXPECT_EQ(sorted[0], failing == 0 ? 1 : -1);
  }
}

const double data[] = {1, 2, 4, 3, 5, 9};

TEST(Allocation, Groups) {
  double mean[2], matrix[4], means[4], matrices[8];
  Task<double> task(2, 3, SS_COLUMNS, data);
  task.set(SS_PARAM_GROUP_INDICES, {0, 1, 1})
      .set(SS_PARAM_GROUP_OUTPUT_INDICES, {1, 1})
      .set(SS_PARAM_POOLED_COV_STORAGE, {0})
      .set(SS_PARAM_GROUP_COV_STORAGE, {0})
      .set(SS_PARAM_POOLED_MEAN, mean)
      .set(SS_PARAM_POOLED_COV, matrix)
      .set(SS_PARAM_GROUP_MEANS, means)
      .set(SS_PARAM_GROUP_COV, matrices);
  EXPECT_EQ(reported_failures([&] {
              return _zokdSSPooledCovariance(task, SS_EST_POOLED | SS_EST_GROUP, SS_METHOD_ONE_PASS,
                                             orv_threads_serial());
            }),
            6);
  // No more threads have sums of their own than there are groups.
  const double wide[33] = {};
  std::vector<double> sums(11 * 11);
  size_t bytes[2];
  for (const int32_t threads : {0, 2, 100}) {
    static int32_t usable;
    usable = threads;
    SSThreadServices services = *orv_threads_serial();
    services.max_threads = [] { return usable; };
    Task<double> pooling(11, 3, SS_COLUMNS, wide);
    pooling.set(SS_PARAM_GROUP_INDICES, {0, 1, 1}).set(SS_PARAM_POOLED_COV_STORAGE, {0});
    pooling.set(SS_PARAM_POOLED_MEAN, sums).set(SS_PARAM_POOLED_COV, sums);
    watch_allocations();
    EXPECT_EQ(_zokdSSPooledCovariance(pooling, SS_EST_POOLED, SS_METHOD_ONE_PASS, &services),
              SS_OK);
    bytes[threads == 100] = seen_allocations().bytes;
  }
  EXPECT_EQ(bytes[0], bytes[1]);
  Task<double> too_many(2, 3, SS_COLUMNS, data);
  too_many.set(SS_PARAM_GROUP_INDICES, {0, INT32_MAX, 1});
  EXPECT_EQ(_zokdSSPooledCovariance(too_many, 0, SS_METHOD_ONE_PASS, orv_threads_serial()),
            SS_NO_MEMORY);
}

TEST(Allocation, PartialCovariance) {
  const double c[] = {2, 1, 1, 2}, indefinite[] = {2, 1, 1, -2};
  double out;
  Task<double> task(2, 1, SS_COLUMNS, nullptr);
  task.set(SS_PARAM_COV, c)
      .set(SS_PARAM_COV_STORAGE, {0})
      .set(SS_PARAM_PARTIAL_INDEX_ARRAY, {1, -1})
      .set(SS_PARAM_PARTIAL_COV, &out)
      .set(SS_PARAM_PARTIAL_COV_STORAGE, {0});
  const auto run = [&] {
    return _zokdSSPartialCovariance(task, SS_EST_PARTIAL_COV, SS_METHOD_FAST, nullptr);
  };
  EXPECT_EQ(reported_failures(run), 1);
  task.set(SS_PARAM_COV, indefinite);
  watch_allocations();
  EXPECT_EQ(run(), SS_FACTOR_FAILED);
  EXPECT_EQ(seen_allocations().open, 0);
}

TEST(Allocation, ExtremesNeedMemoryForAMaskInColumns) {
  for (const int64_t layout : {SS_ROWS, SS_COLUMNS}) {
    for (const bool masked : {false, true}) {
      double high[2];
      Task<double> task(2, 3, layout, data);
      task.set(SS_PARAM_MAXIMUM, high);
      if (masked) task.set(SS_PARAM_VARIABLE_MASK, {0, 1});
      EXPECT_EQ(reported_failures([&] {
                  high[0] = high[1] = 0;
                  return _zokdSSMinmax(task, SS_EST_MAX, SS_METHOD_FAST, nullptr);
                }),
                masked && layout == SS_COLUMNS);
      EXPECT_EQ(high[0], masked ? 0 : layout == SS_ROWS ? 4 : 5);
      EXPECT_EQ(high[1], 9);
    }
  }
}

}  // namespace
