// SPDX-License-Identifier: MIT
// Inverse and repair of covariance matrices.
#include <gtest/gtest.h>
#include <orv/scalar.h>
#include <orv/ss.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

template <class T>
struct Helpers;
template <>
struct Helpers<double> {
  static constexpr auto invert = __zokdInvCov;
  static constexpr auto repair = __zokdTestCovRank;
  static constexpr double tiny = 4.94e-321;
};
template <>
struct Helpers<float> {
  static constexpr auto invert = __zoksInvCov;
  static constexpr auto repair = __zoksTestCovRank;
  static constexpr float tiny = 1.401e-42f;
};

template <class T>
class CovarianceHelpers : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(CovarianceHelpers, Precisions);

/// A random matrix with eigenvalues from 1 up, by columns; below the diagonal it has NaNs.
template <class T>
std::vector<T> upper_covariance(int p, uint32_t seed) {
  std::mt19937 random(seed);
  const auto n = static_cast<size_t>(p);
  std::vector<long double> factor(n * n);
  for (auto& x : factor) x = static_cast<long double>(random() >> 8) * 0x1p-23L - 1;
  std::vector<T> c(n * n, std::numeric_limits<T>::quiet_NaN());
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j <= i; ++j) {
      long double sum = i == j;
      for (size_t k = 0; k < n; ++k) sum += factor[i * n + k] * factor[j * n + k];
      c[i * n + j] = static_cast<T>(sum);
    }
  }
  return c;
}

TYPED_TEST(CovarianceHelpers, InverseOfTheUpperTriangle) {
  using T = TypeParam;
  for (int p = 1; p <= 9; ++p) {
    for (uint32_t seed = 0; seed < 20; ++seed) {
      const auto n = static_cast<size_t>(p);
      const std::vector<T> c = upper_covariance<T>(p, seed);
      std::vector<T> inverse = c;
      ASSERT_EQ(Helpers<T>::invert(p, inverse.data()), SS_OK);
      const auto at = [n](const std::vector<T>& m, size_t i, size_t j) -> long double {
        return m[std::max(i, j) * n + std::min(i, j)];
      };
      for (size_t i = 0; i < n; ++i) {
        for (size_t j = 0; j < n; ++j) {
          long double sum = 0, size = 0;
          for (size_t k = 0; k < n; ++k) {
            const long double term = at(c, i, k) * at(inverse, k, j);
            sum += term, size += std::fabs(term);
          }
          const long double bound = 30 * size * std::numeric_limits<T>::epsilon();
          ASSERT_NEAR(static_cast<double>(sum), i == j, static_cast<double>(bound)) << p;
          if (i > j) {
            ASSERT_TRUE(std::isnan(inverse[j * n + i])) << p;
          }
        }
      }
    }
  }
}

TYPED_TEST(CovarianceHelpers, InverseInClosedForm) {
  using T = TypeParam;
  constexpr T infinity = std::numeric_limits<T>::infinity();
  const struct {
    int p;
    std::vector<T> c, inverse;
  } rows[] = {
      {1, {4}, {0.25f}},
      {1, {0}, {infinity}},
      {2, {2, 7, 0, 4}, {0.5f, 7, 0, 0.25f}},
      {2, {1, 7, 1, 1}, {infinity, 7, -infinity, infinity}},
      {3, {2, 7, 7, 0, 4, 7, 0, 0, 8}, {0.5f, 7, 7, 0, 0.25f, 7, 0, 0, 0.125f}},
      {3, {2, 7, 7, 1, 2, 7, 0, 1, 2}, {0.75f, 7, 7, -0.5f, 1, 7, 0.25f, -0.5f, 0.75f}},
      {0, {3}, {3}},
  };
  for (const auto& row : rows) {
    std::vector<T> c = row.c;
    EXPECT_EQ(Helpers<T>::invert(row.p, c.data()), SS_OK);
    EXPECT_EQ(c, row.inverse) << row.p;
  }
}

template <class T>
struct Repair {
  const char* what;
  int p;
  std::vector<T> c;
  int32_t status;
  std::vector<T> after;
};

TYPED_TEST(CovarianceHelpers, RepairOfOneThatIsNotPositiveDefinite) {
  using T = TypeParam;
  constexpr T tiny = Helpers<T>::tiny, shift = static_cast<T>(0.01);
  constexpr T nan = std::numeric_limits<T>::quiet_NaN();
  const Repair<T> rows[] = {
      {"positive number", 1, {tiny}, SS_OK, {tiny}},
      {"zero", 1, {0}, SS_OK, {tiny}},
      {"nearly zero", 1, {-tiny}, SS_OK, {tiny}},
      {"negative number", 1, {-2 * tiny}, SS_NO_POSITIVE_EIGENVALUE, {-2 * tiny}},
      {"positive definite", 2, {2, 1, 1, 2}, SS_OK, {2, 1, 1, 2}},
      {"eigenvalues 0, 1, 4",
       3,
       {1, 0, 0, 0, 0, 0, 0, 0, 4},
       SS_OK,
       {1 + shift, 0, 0, 0, shift, 0, 0, 0, 4 + shift}},
      {"eigenvalue nearly 0",
       2,
       {4, 0, 0, T(-1e-20)},
       SS_OK,
       {4 + 4 * shift, 0, 0, T(-1e-20) + 4 * shift}},
      {"eigenvalues -1 and 3", 2, {1, 2, 2, 1}, SS_OK, {1 + 3 * shift, 2, 2, 1 + 3 * shift}},
      {"one too small to count",
       3,
       {tiny / 2, 0, 0, 0, 0, 0, 0, 0, 1},
       SS_OK,
       {shift, 0, 0, 0, shift, 0, 0, 0, 1 + shift}},
      {"negative definite", 2, {-2, 1, 1, -2}, SS_NO_POSITIVE_EIGENVALUE, {-2, 1, 1, -2}},
      {"zero matrix", 2, {0, 0, 0, 0}, SS_NO_POSITIVE_EIGENVALUE, {0, 0, 0, 0}},
      {"lower triangle from the upper", 2, {2, 1, T(1.25), 2}, SS_OK, {2, T(1.25), T(1.25), 2}},
      {"none", 0, {-1}, SS_OK, {-1}},
  };
  for (const auto& row : rows) {
    std::vector<T> c = row.c;
    EXPECT_EQ(Helpers<T>::repair(row.p, c.data()), row.status) << row.what;
    for (size_t i = 0; i < c.size(); ++i) {
      // Eigenvalues that are not exact come to the sum of squares.
      const T rounding = 4 * std::numeric_limits<T>::epsilon() * std::abs(row.after[i]);
      EXPECT_NEAR(c[i], row.after[i], row.c[i] == row.after[i] ? T(0) : rounding) << row.what;
    }
  }
  for (const int p : {1, 2}) {
    std::vector<T> c(static_cast<size_t>(p * p), nan);
    EXPECT_LT(Helpers<T>::repair(p, c.data()), 0);
  }
}

// Of these, computed eigenvalues don't tell what is rounding: a smallest one above 0 is noise half
// of the time where variables depend on each other, and so it is where they are of very different
// size but do not.
TYPED_TEST(CovarianceHelpers, RepairTellsRankFromRounding) {
  using T = TypeParam;
  constexpr size_t p = 5, n = 40;
  std::mt19937 random(2);
  std::normal_distribution<long double> normal;
  for (const size_t rank : {2, 3, 4, 5}) {
    int changed = 0;
    for (int repeat = 0; repeat < 300; ++repeat) {
      std::vector<long double> loading(p * rank);
      std::vector<long double> sum(p * p);
      for (auto& x : loading) x = normal(random);
      for (size_t i = 0; i < n; ++i) {
        long double x[p] = {};
        for (size_t k = 0; k < rank; ++k) {
          const long double factor = normal(random);
          for (size_t j = 0; j < p; ++j) x[j] += factor * loading[j * rank + k];
        }
        for (size_t j = 0; j < p * p; ++j) sum[j] += x[j / p] * x[j % p];
      }
      std::vector<T> c;
      for (size_t j = 0; j < p * p; ++j) {  // deviations from 0.01 to 100
        const auto power = static_cast<long double>(j / p + j % p) - 4;
        c.push_back(static_cast<T>(sum[j] * std::pow(10.0L, power)));
      }
      const std::vector<T> before = c;
      ASSERT_EQ(Helpers<T>::repair(p, c.data()), SS_OK);
      changed += c != before;
      ASSERT_EQ(Helpers<T>::invert(p, c.data()), SS_OK) << rank << " " << repeat;
    }
    EXPECT_GE(changed, rank == p ? 0 : rank == 4 ? 225 : 294) << rank;
    EXPECT_LE(changed, rank == p ? 3 : 300);
  }
}

}  // namespace
