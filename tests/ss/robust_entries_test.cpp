// SPDX-License-Identifier: MIT
// What robust covariance looks for, in which order, and what it leaves when memory fails.
#include <cmath>

#include "failing_allocator.hpp"
#include "orv/serv.h"
#include "support.hpp"

using namespace orv_test;

namespace {

/// Two threads, one after the other on this one, so that all that is allocated is counted.
SSThreadServices two_in_turn() {
  SSThreadServices services = *orv_threads_serial();
  services.max_threads = [] { return int32_t{2}; };
  services.run_threads = [](int32_t threads, void* args, SSItemFunction function) {
    for (int32_t t = 0; t < threads; ++t) function(t, 0, threads, args);
  };
  return services;
}

template <class T>
struct Call {
  int32_t p = 5, n, layout, storage;
  std::vector<T> x, mean, cov;
  SSTask task = {};
  uint64_t method = SS_METHOD_TBS;

  Call(int32_t observations, int32_t layout_code, int32_t storage_code)
      : n(observations),
        layout(layout_code),
        storage(storage_code),
        x(Data<T>(p, n, unweighted).x),
        mean(5, -1),
        cov(25, -1) {
    task.dimension = &p;
    task.observation_count = &n;
    task.observation_storage = &layout;
    task.observations = x.data();
    task.robust_cov_storage = &storage;
    task.robust_cov = cov.data();
    task.robust_mean = mean.data();
  }
  int32_t operator()() {
    static const SSThreadServices services = two_in_turn();
    return Entries<T>::robust_covariance(&task, 0, method, &services);
  }
};

// None may pass for a result.
TYPED_TEST(EachPrecision, RobustCovarianceReportsEveryFailingAllocation) {
  for (const int32_t n : {600, 6000}) {  // below and above what threads are worth
    for (int way = 0; way < 6; ++way) {
      Choices choose{way};
      const int32_t layout = choose(2) != 0 ? SS_ROWS : SS_COLUMNS;
      Call<TypeParam> call(n, layout, choose(3));
      ASSERT_EQ(call(), SS_OK);  // LAPACK and OpenMP keep memory from their first call on
      const std::vector<TypeParam> expected = call.cov;
      int asked = 0;
      for (int failing = 1;; ++failing) {
        watch_allocations(failing);
        const int32_t status = call();
        const Allocations seen = seen_allocations();
        EXPECT_EQ(seen.open, 0) << failing;
        if (failing > seen.asked) {
          EXPECT_EQ(status, SS_OK);
          asked = seen.asked;
          break;
        }
        EXPECT_EQ(status, SS_NO_MEMORY) << failing;
      }
      EXPECT_GT(asked, 4);
      EXPECT_EQ(bits(call.cov), bits(expected));
    }
  }
}

// From the last check on one thing more is wrong at a time, and is told before the others.
TYPED_TEST(EachPrecision, RobustCovarianceChecksInItsOrder) {
  static const int32_t none = 0, negative = -1, three = 3, ten = 10, both = SS_ROWS | SS_COLUMNS;
  for (const int32_t layout : {SS_ROWS, SS_COLUMNS}) {
    Call<TypeParam> call(40, layout, SS_MATRIX_FULL);
    EXPECT_EQ(call(), SS_OK);  // BLAS keeps what it takes the first time
    const auto expect = [&](int32_t status) {
      watch_allocations();
      EXPECT_EQ(call(), status);
      EXPECT_EQ(seen_allocations().open, 0);
    };
    expect(SS_OK);
    call.task.observations = nullptr;
    expect(SS_NULL_OBSERVATIONS);
    call.method = ~uint64_t{SS_METHOD_TBS};
    expect(SS_BAD_METHOD);
    const auto expect_integer = [&](const void* SSTask::*field, const int32_t* wrong,
                                    int32_t status) {
      call.task.*field = wrong;
      expect(status);
    };
    expect_integer(&SSTask::robust_cov_storage, &three, SS_BAD_STORAGE);
    expect_integer(&SSTask::robust_cov_storage, &negative, SS_BAD_STORAGE);
    expect_integer(&SSTask::robust_cov_storage, nullptr, SS_NULL_STORAGE);
    call.task.robust_mean = nullptr;
    expect(SS_NULL_ROBUST_MEAN);
    call.task.robust_cov = nullptr;
    expect(SS_NULL_ROBUST_COV);
    expect_integer(&SSTask::observation_storage, &both, SS_BAD_STORAGE);
    expect_integer(&SSTask::observation_storage, nullptr, SS_NULL_STORAGE);
    expect_integer(&SSTask::observation_count, &ten, SS_NULL_OBSERVATIONS);  // 2 p
    expect_integer(&SSTask::observation_count, nullptr, SS_NULL_OBSERVATIONS);
    for (const int32_t* wrong : {&none, &negative, static_cast<const int32_t*>(nullptr)}) {
      expect_integer(&SSTask::dimension, wrong, SS_BAD_DIMENSION);
    }
  }
}

// Where the covariance has no inverse, the caller's matrix is not released.
TYPED_TEST(EachPrecision, RobustCovarianceLeavesTheCallersMatrix) {
  Call<TypeParam> call(40, SS_COLUMNS, SS_MATRIX_FULL);
  for (size_t i = 0; i < 40; ++i) {
    for (size_t j = 1; j < 5; ++j) call.x[5 * i + j] = call.x[5 * i];
  }
  auto* const matrix = static_cast<TypeParam*>(orv_serv_allocate(25 * sizeof(TypeParam), 128));
  call.task.robust_cov = matrix;
  call();
  EXPECT_TRUE(std::isfinite(matrix[0]));
  orv_serv_deallocate(matrix);  // ends the program if it was released before
}

}  // namespace
