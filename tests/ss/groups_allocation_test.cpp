// What pooled and partial covariance and the extremes allocate, and what is left when it fails.
#include <functional>

#include "serv/failing_allocator.hpp"
#include "support.hpp"

using namespace orv_test;

namespace {

const double x[] = {1, 2, 4, 3, 5, 9};

/// Lets each allocation fail in turn, until the call needs no more.
void expect_clean_failures(int allocations, const std::function<int32_t()>& run) {
  for (int failing = 1; failing <= allocations + 1; ++failing) {
    watch_allocations(failing);
    const int32_t status = run();
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, failing <= allocations ? SS_NO_MEMORY : SS_OK) << failing;
    EXPECT_EQ(seen.open, 0) << failing;
  }
}

TEST(Groups, WithoutMemoryNothingIsLeft) {
  double mean[2], matrix[4], means[4], matrices[8];
  Task<double> task(2, 3, SS_COLUMNS, x);
  task.set(SS_PARAM_GROUP_INDICES, {0, 1, 1})
      .set(SS_PARAM_GROUP_OUTPUT_INDICES, {1, 1})
      .set(SS_PARAM_POOLED_COV_STORAGE, {0})
      .set(SS_PARAM_GROUP_COV_STORAGE, {0})
      .set(SS_PARAM_POOLED_MEAN, mean)
      .set(SS_PARAM_POOLED_COV, matrix)
      .set(SS_PARAM_GROUP_MEANS, means)
      .set(SS_PARAM_GROUP_COV, matrices);
  expect_clean_failures(6, [&] {
    return _zokdSSPooledCovariance(task, SS_EST_POOLED | SS_EST_GROUP, SS_METHOD_ONE_PASS,
                                   orv_threads_serial());
  });
  Task<double> too_many(2, 3, SS_COLUMNS, x);
  too_many.set(SS_PARAM_GROUP_INDICES, {0, INT32_MAX, 1});
  EXPECT_EQ(_zokdSSPooledCovariance(too_many, 0, SS_METHOD_ONE_PASS, orv_threads_serial()),
            SS_NO_MEMORY);
}

TEST(Partial, WithoutMemoryOrInverseNothingIsLeft) {
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
  EXPECT_EQ(run(), SS_OK);  // with what OpenMP needs once in a thread, and can't do without
  expect_clean_failures(1, run);
  task.set(SS_PARAM_COV, indefinite);
  watch_allocations();
  EXPECT_EQ(run(), SS_FACTOR_FAILED);
  EXPECT_EQ(seen_allocations().open, 0);
}

TEST(MinMax, OnlyAMaskInColumnsNeedsMemory) {
  for (const int64_t layout : {SS_ROWS, SS_COLUMNS}) {
    for (const bool masked : {false, true}) {
      double high[] = {0, 0};
      Task<double> task(2, 3, layout, x);
      task.set(SS_PARAM_MAXIMUM, high);
      if (masked) task.set(SS_PARAM_VARIABLE_MASK, {0, 1});
      expect_clean_failures(masked && layout == SS_COLUMNS ? 1 : 0, [&] {
        return _zokdSSMinmax(task, SS_EST_MAX, SS_METHOD_FAST, nullptr);
      });
      EXPECT_EQ(high[0], masked ? 0 : layout == SS_ROWS ? 4 : 5);
      EXPECT_EQ(high[1], 9);
    }
  }
}

}  // namespace
