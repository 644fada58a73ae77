// SPDX-License-Identifier: MIT
// What the helpers for covariance matrices allocate and release, and how they end where LAPACK
// fails.
#include <gtest/gtest.h>
#include <orv/scalar.h>
#include <orv/serv.h>
#include <orv/ss.h>

#include <vector>

#include "failing_allocator.hpp"

using namespace orv_test;

/// In this program LAPACK's routines for floats fail.
extern "C" void ssyev_(const char*, const char*, const int32_t*, float* a, const int32_t*, float*,
                       float*, const int32_t*, int32_t* info, size_t, size_t) {
  a[0] = a[1] = a[3] = 99;
  *info = 1;
}
extern "C" void spotri_(const char*, const int32_t*, float*, const int32_t*, int32_t* info,
                        size_t) {
  *info = 1;
}

namespace {

template <class T>
std::vector<T> diagonal(T x) {
  std::vector<T> c(16);
  for (size_t i = 0; i < 16; i += 5) c[i] = x;
  return c;
}

/// LAPACK keeps memory from its first call on.
void wake_lapack() {
  std::vector<double> unit = diagonal(1.0);
  EXPECT_EQ(__zokdInvCov(4, unit.data()), SS_OK);
}

TEST(CovarianceHelpers, AMatrixWithoutAFactorIsReleased) {
  wake_lapack();
  const auto expect_released = [](auto invert, auto negative) {
    const std::vector c = diagonal(negative);
    watch_allocations();
    auto* const block = static_cast<decltype(negative)*>(orv_serv_allocate(16 * sizeof c[0], 128));
    std::copy(c.begin(), c.end(), block);
    EXPECT_EQ(invert(4, block), SS_NOT_POSITIVE_DEFINITE);
    EXPECT_EQ(seen_allocations().open, 0);
  };
  expect_released(__zokdInvCov, -1.0);
  expect_released(__zoksInvCov, -1.0f);
  std::vector<float> singular = diagonal(1.0f);
  EXPECT_EQ(__zoksInvCov(4, singular.data()), SS_SINGULAR);
}

TEST(CovarianceHelpers, ScratchIsReleasedOnEveryWay) {
  wake_lapack();
  const auto expect_released = [](auto repair, auto c00, int failing, int32_t status) {
    const std::vector<decltype(c00)> before = {c00, 0.5f, 0.5f, 1};
    auto c = before;
    watch_allocations(failing);
    EXPECT_EQ(repair(2, c.data()), status);
    const Allocations seen = seen_allocations();
    EXPECT_EQ(seen.open, 0) << status;
    EXPECT_GE(seen.bytes, 10 * sizeof c00);
    EXPECT_EQ(c == before, status != SS_OK || c00 > 0) << status;
  };
  expect_released(__zokdTestCovRank, 1.0, 0, SS_OK);
  expect_released(__zokdTestCovRank, 0.0, 0, SS_OK);
  expect_released(__zokdTestCovRank, 0.0, 1, SS_NO_MEMORY);
  expect_released(__zoksTestCovRank, 0.0f, 1, SS_NO_MEMORY);
  expect_released(__zoksTestCovRank, 0.0f, 0, SS_EIGENVALUES_FAILED);
}

}  // namespace
