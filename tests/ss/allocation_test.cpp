// What tasks and statistics allocate, and what is left when it fails.
#include <functional>

#include "entry_cases.hpp"
#include "serv/failing_allocator.hpp"

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

TYPED_TEST(StatisticsAllocation, EveryFailureIsReportedAndLeavesNothing) {
  using T = TypeParam;
  const int64_t selected[] = {1, 0};
  for (const Case& c : all_cases<T>()) {
    if (c.entry == Entries<T>::quantiles) continue;  // see below
    for (const void* mask :
         {static_cast<const void*>(nullptr), static_cast<const void*>(selected)}) {
      SCOPED_TRACE(testing::Message() << "estimates " << c.estimates << (mask ? ", masked" : ""));
      CaseTask<T> task(c);
      task.set(offsetof(SSTask, variable_mask), mask);
      reported_failures([&] { return task.run(); });
      for (size_t i = task.checks.size(); i-- > 0;) {
        for (const void* wrong : task.checks[i].wrong) {
          task.set(task.checks[i].field, wrong);
          watch_allocations();
          task.run();
          EXPECT_EQ(seen_allocations().open, 0) << "check " << i;
        }
      }
    }
  }
}

TYPED_TEST(StatisticsAllocation, ThreadsAndBlocks) {
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

// Without memory these report nothing, and compute nothing.
TYPED_TEST(StatisticsAllocation, Quantiles) {
  using T = TypeParam;
  const T x[] = {3, 5, 1, 6, 2, 4}, median = T(0.5);
  for (const int failing : {0, 1}) {
    std::vector<T> results(8, -1);
    Task<T> task(2, 3, SS_COLUMNS, x);
    task.set(SS_PARAM_QUANT_ORDER_COUNT, {1})
        .set(SS_PARAM_QUANT_ORDERS, &median)
        .set(SS_PARAM_QUANTILES, results)
        .set(SS_PARAM_ORDER_STATS, &results[2])
        .set(SS_PARAM_ORDER_STATS_STORAGE, {SS_COLUMNS});
    watch_allocations(failing);
    const int32_t status = Entries<T>::quantiles(task, SS_EST_QUANTILES | SS_EST_ORDER_STATS,
                                                 SS_METHOD_FAST, orv_threads_serial());
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, SS_OK);
    EXPECT_EQ(seen.asked, 1);
    EXPECT_EQ(seen.bytes, 3 * sizeof(T) + 2 * sizeof(int32_t));
    EXPECT_EQ(seen.open, 0);
    EXPECT_EQ(results,
              failing != 0 ? std::vector<T>(8, -1) : std::vector<T>({2, 5, 1, 4, 2, 5, 3, 6}));
  }
}

// No more threads have sums of their own than there are groups, and no more groups are counted than
// items are.
TEST(Allocation, Groups) {
  static int32_t usable;
  SSThreadServices services = *orv_threads_serial();
  services.max_threads = [] { return usable; };
  const double x[33] = {};
  std::vector<double> results(11 * 11);
  std::vector<size_t> bytes;
  Task<double> task(11, 3, SS_COLUMNS, x);
  task.set(SS_PARAM_POOLED_MEAN, results).set(SS_PARAM_POOLED_COV, results);
  task.set(SS_PARAM_POOLED_COV_STORAGE, {0});
  const auto run = [&](int32_t threads, int64_t last_group) {
    usable = threads;
    task.set(SS_PARAM_GROUP_INDICES, {0, 1, last_group});
    watch_allocations();
    const int32_t status =
        _zokdSSPooledCovariance(task, SS_EST_POOLED, SS_METHOD_ONE_PASS, &services);
    bytes.push_back(seen_allocations().bytes);
    return status;
  };
  for (const int32_t threads : {0, 1, 2, 100}) EXPECT_EQ(run(threads, 1), SS_OK);
  EXPECT_EQ(bytes[0], bytes[1]);
  EXPECT_LT(bytes[1], bytes[2]);
  EXPECT_EQ(bytes[2], bytes[3]);
  EXPECT_EQ(run(1, INT32_MAX), SS_NO_MEMORY);
}

}  // namespace
