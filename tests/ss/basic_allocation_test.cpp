// Tasks and the basic statistics when an allocation fails.
#include "serv/failing_allocator.hpp"
#include "support.hpp"

namespace orv_test {
namespace {

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
void every_allocation_fails_in_turn() {
  constexpr int p = 3, n = 2500;
  const std::vector<T> x(p * n, 1), w(n, 1);
  std::vector<T> mean(p), raw2(p), cov(p * p);
  for (const bool weighted : {false, true}) {
    for (const bool masked : {false, true}) {
      for (const uint64_t method : {SS_METHOD_FAST, SS_METHOD_ONE_PASS}) {
        SCOPED_TRACE(testing::Message() << weighted << masked << method << sizeof(T));
        Task<T> task(p, n, SS_ROWS, x.data());
        task.set(SS_PARAM_MEAN, mean).set(SS_PARAM_RAW_MOMENT_2, raw2).set(SS_PARAM_COV, cov);
        task.set(SS_PARAM_COV_STORAGE, {SS_MATRIX_LOWER_PACKED});
        if (weighted) task.set(SS_PARAM_WEIGHTS, w);
        if (masked) task.set(SS_PARAM_VARIABLE_MASK, {1, 0, 1});
        const auto run = [&](int failing, Allocations& seen) {
          watch_allocations(failing);
          const int32_t status =
              Entries<T>::basic(task, SS_EST_RAW2 | SS_EST_COV, method, two_turns());
          seen = seen_allocations();
          return status;
        };
        Allocations seen;
        run(0, seen);  // OpenMP asks once, for as long as the thread lives
        ASSERT_EQ(run(0, seen), SS_OK);
        EXPECT_EQ(seen.open, 0);
        const int allocations = seen.asked;
        // Sums, matrix, threads; copies under a mask; scaled data of each thread.
        EXPECT_GE(allocations, 3 + masked + (weighted && method == SS_METHOD_FAST ? 2 : 0));
        for (int failing = 1; failing <= allocations; ++failing) {
          EXPECT_EQ(run(failing, seen), SS_NO_MEMORY) << failing;
          EXPECT_EQ(seen.open, 0) << failing;
        }
      }
    }
  }
}

TEST(Allocation, BasicReportsEveryFailureAndKeepsNothing) {
  every_allocation_fails_in_turn<double>();
  every_allocation_fails_in_turn<float>();
}

}  // namespace
}  // namespace orv_test
