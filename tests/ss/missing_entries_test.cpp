// SPDX-License-Identifier: MIT
// Missing values: what is looked for and in which order, and what is left when memory fails.
#include <algorithm>
#include <cmath>
#include <limits>

#include "failing_allocator.hpp"
#include "support.hpp"

using namespace orv_test;

namespace {

template <class T>
constexpr auto missing_values = sizeof(T) == 8 ? _zokdSSMissingValues : _zoksSSMissingValues;

int32_t moments_of(SSTask* task, double* to, int32_t* n) {
  return _zokdSSMissingMoments(task, to, n);
}
int32_t moments_of(SSTask* task, float* to, int32_t* n) {
  return _zoksSSMissingMoments(task, to, n);
}

/// Three imputations of a small table that asks for all there is.
template <class T>
struct Setup {
  static constexpr int64_t p = 2, n = 9, missing = 3, m = 3, da = 4, size = p * (p + 3) / 2;

  Setup() {
    const T gone = sizeof(T) == 8 ? static_cast<T>(orv_missing_d()) : orv_missing_s();
    x = {1, 2, 5, gone, 2, 4, gone, 6, 7, 1, 3, 3, gone, 8, 2, 6, 4, 4};
    std::memset(&task, 0, sizeof task);
    task.int_is_64 = 1;
    task.dimension = &integers[0];
    task.observation_count = &integers[1];
    task.observation_storage = &integers[2];
    task.missing_param_count = &integers[3];
    task.simulated_count = &integers[4];
    task.estimates_count = &integers[5];
    task.init_estimates_count = &integers[6];
    task.observations = x.data();
    task.missing_params = params;
    task.init_estimates = start;
    task.simulated_values = simulated;
    task.estimates = estimates;
  }
  int32_t run(uint64_t method = SS_METHOD_MULTIPLE_IMPUTATION) {
    return missing_values<T>(&task, 0, method, nullptr);
  }

  std::vector<T> x;
  int64_t integers[7] = {p, n, SS_COLUMNS, 5, m* missing, size* m* da, size};
  T params[5] = {20, da, T(1e-3), m, missing};
  T start[size] = {3, 4, 4, 0, 5};
  T simulated[m * missing], estimates[size * m * da];
  SSTask task;
};

TYPED_TEST(EachPrecision, MissingValuesCheckInTheirOrder) {
  using T = TypeParam;
  const T nan = std::numeric_limits<T>::quiet_NaN();
  const struct {
    void (*spoil)(Setup<T>&, T);
    int32_t status;
  } checks[] = {
      {[](Setup<T>& s, T) { s.integers[0] = 0; }, -4001},
      {[](Setup<T>& s, T) { s.task.dimension = nullptr; }, -4001},
      {[](Setup<T>& s, T) { s.task.observation_storage = nullptr; }, -4003},
      {[](Setup<T>& s, T) { s.integers[2] = SS_ROWS | SS_COLUMNS; }, -4003},
      {[](Setup<T>& s, T) { s.task.missing_params = nullptr; }, -4048},
      {[](Setup<T>& s, T) { s.task.missing_param_count = nullptr; }, -4049},
      {[](Setup<T>& s, T) { s.integers[3] = 4; }, -4050},
      {[](Setup<T>& s, T) { s.task.simulated_count = nullptr; }, -4055},
      {[](Setup<T>& s, T) { s.task.simulated_values = nullptr; }, -4054},
      {[](Setup<T>& s, T) { s.integers[4] = 0, s.task.estimates = nullptr; }, -4060},
      {[](Setup<T>& s, T) { s.integers[4] = 0, s.task.estimates_count = nullptr; }, -4060},
      {nullptr, -4029},
      {[](Setup<T>& s, T) { s.integers[1] = 0; }, -4002},
      {[](Setup<T>& s, T) { s.task.observations = nullptr; }, -4032},
      {[](Setup<T>& s, T) { s.params[4] = 2; }, -4063},
      {[](Setup<T>& s, T x) { s.x[0] = -x; }, -4063},  // one more is missing
      {[](Setup<T>& s, T) { s.params[3] = 0; }, -4051},
      {[](Setup<T>& s, T x) { s.params[3] = x; }, -4051},
      {[](Setup<T>& s, T) { s.integers[4] -= 1; }, -4058},
      {[](Setup<T>& s, T) { s.params[3] = T(1e9); }, -4058},
      {[](Setup<T>& s, T) { s.integers[5] += 1; }, -4059},
      {[](Setup<T>& s, T) { s.params[1] = 3; }, -4059},
      {[](Setup<T>& s, T) { s.params[1] = 0; }, -4059},  // the default is 30
      {[](Setup<T>& s, T) { s.integers[1] = 2, s.params[4] = 1, s.integers[4] = 3; }, -5023}};
  EXPECT_EQ(Setup<T>().run(), SS_OK);  // BLAS and OpenMP ask once
  for (const auto& alone : checks) {   // what comes later is not seen
    for (const auto& later : checks) {
      if (&later < &alone) continue;
      // These may cancel each other out.
      if (later.status == alone.status && &later != &alone) continue;
      if (alone.status == -4055 && later.status == -4054) continue;
      Setup<T> setup;
      uint64_t method = SS_METHOD_MULTIPLE_IMPUTATION;
      for (const auto* c : {&later, &alone}) {
        if (c->spoil == nullptr) {
          method = ~uint64_t{SS_METHOD_MULTIPLE_IMPUTATION};
        } else {
          c->spoil(setup, nan);
        }
      }
      watch_allocations();
      const int32_t status = setup.run(method);
      const Allocations seen = seen_allocations();
      EXPECT_EQ(status, alone.status) << &alone - checks << " " << &later - checks;
      EXPECT_EQ(seen.open, 0) << status;
      if (status > -5000) {
        EXPECT_EQ(seen.asked, 0) << status;
      }
    }
  }
}

// It is counted as one, and spreads.
TYPED_TEST(EachPrecision, APositiveNaNIsAValue) {
  Setup<TypeParam> setup;
  setup.x[0] = std::numeric_limits<TypeParam>::quiet_NaN();
  EXPECT_EQ(setup.run(), SS_OK);
  EXPECT_TRUE(std::isnan(setup.estimates[0]));
}

// Either of values and estimates may be asked for alone.
TYPED_TEST(EachPrecision, MissingValuesLeaveNothingWhenMemoryFails) {
  using T = TypeParam;
  for (const char* asked :
       {"both", "values", "estimates", "estimates and a count of 0", "moments"}) {
    Setup<T> setup;
    const std::string what = asked;
    if (what == "values") setup.task.estimates = nullptr;
    if (what == "estimates")
      setup.task.simulated_values = nullptr, setup.task.simulated_count = nullptr;
    if (what == "estimates and a count of 0") setup.integers[4] = 0;
    T moments[setup.size];
    int32_t iterations;
    const auto run = [&] {
      return what == "moments" ? moments_of(&setup.task, moments, &iterations) : setup.run();
    };
    EXPECT_EQ(run(), SS_OK) << what;
    for (int failing = 1;; ++failing) {
      watch_allocations(failing);
      const int32_t status = run();
      const Allocations seen = seen_allocations();
      EXPECT_EQ(seen.open, 0) << what << failing;
      if (failing > seen.asked) {
        EXPECT_EQ(status, SS_OK) << what;
        EXPECT_GT(seen.asked, 8) << what;
        break;
      }
      // A stream without memory has a status of its own, which is passed on.
      EXPECT_TRUE(status == SS_NO_MEMORY || status == -4 || status == SS_IMPUTATION_FAILED)
          << what << failing << ": " << status;
    }
  }
}

}  // namespace
