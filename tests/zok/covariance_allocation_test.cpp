// What the helpers for covariance matrices allocate, and the matrix that one of them releases.
#include <gtest/gtest.h>
#include <orv/scalar.h>
#include <orv/serv.h>
#include <orv/ss.h>

#include <vector>

#include "failing_allocator.hpp"

using namespace orv_test;

namespace {

TEST(CovarianceHelpers, AMatrixWithoutAFactorIsReleased) {
  const auto expect_released = [](auto invert, auto element) {
    using T = decltype(element);
    std::vector<T> unit(16);  // what LAPACK keeps from its first call on does not count
    for (size_t i = 0; i < 16; i += 5) unit[i] = 1;
    EXPECT_EQ(invert(4, unit.data()), SS_OK);
    watch_allocations();
    auto* const c = static_cast<T*>(orv_serv_allocate(16 * sizeof(T), 128));
    for (int i = 0; i < 16; ++i) c[i] = i % 5 == 0 ? -1.0f : 0.0f;
    EXPECT_EQ(invert(4, c), SS_NOT_POSITIVE_DEFINITE);
    EXPECT_EQ(seen_allocations().open, 0);
  };
  expect_released(__zokdInvCov, 1.0);
  expect_released(__zoksInvCov, 1.0f);
}

TEST(CovarianceHelpers, ScratchIsReleasedOnEveryWay) {
  const auto expect_released = [](auto repair, auto element) {
    using T = decltype(element);
    const struct {
      T c00;
      int failing;
      int32_t status;
    } rows[] = {{1, 0, SS_OK}, {0, 0, SS_OK}, {0, 1, SS_NO_MEMORY}};
    for (const auto& row : rows) {
      std::vector<T> c = {row.c00, 0, 0, 1};
      watch_allocations(row.failing);
      EXPECT_EQ(repair(2, c.data()), row.status);
      const Allocations seen = seen_allocations();
      EXPECT_EQ(seen.open, 0);
      EXPECT_GE(seen.bytes, 10 * sizeof(T));
      if (row.failing != 0) {
        EXPECT_EQ(c, (std::vector<T>{row.c00, 0, 0, 1}));
      }
    }
  };
  expect_released(__zokdTestCovRank, 1.0);
  expect_released(__zoksTestCovRank, 1.0f);
}

}  // namespace
