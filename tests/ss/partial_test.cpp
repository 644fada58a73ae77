// Partial covariance and correlation against elimination, one variable at a time, in long double.
#include <algorithm>
#include <cmath>
#include <limits>

#include "support.hpp"

using namespace orv_test;

namespace {

/// A well-conditioned symmetric matrix with exact elements in either precision.
std::vector<long double> covariance(int64_t p) {
  std::vector<long double> c;
  for (int64_t ij = 0; ij < p * p; ++ij) {
    const auto [low, high] = std::minmax({ij / p, ij % p});
    c.push_back(low == high ? p + low : (low * 37 + high * high * 11) % 31 / 32.0L - 0.5L);
  }
  return c;
}

/// The stored elements in their order.
template <class T>
std::vector<T> stored(int64_t p, int64_t storage, const std::vector<long double>& c) {
  std::vector<T> out;
  for_each_stored(storage, p,
                  [&](int64_t i, int64_t j) { out.push_back(static_cast<T>(c[i * p + j])); });
  return out;
}

/// Off the diagonal: divided by the roots of the diagonal's elements, or multiplied.
std::vector<long double> scaled(std::vector<long double> c, int64_t p, long double power) {
  for (int64_t ij = 0; ij < p * p; ++ij) {
    const int64_t i = ij / p, j = ij % p;
    if (i != j) c[ij] *= std::pow(c[i * p + i] * c[j * p + j], power);
  }
  return c;
}

std::vector<long double> eliminated(std::vector<long double> c, int64_t p,
                                    const std::vector<int64_t>& roles) {
  for (int64_t z = 0; z < p; ++z) {
    const std::vector<long double> before = c;
    for (int64_t ij = 0; roles[z] == -1 && ij < p * p; ++ij) {
      c[ij] -= before[ij / p * p + z] * before[z * p + ij % p] / before[z * p + z];
    }
  }
  std::vector<long double> of_interest;
  for (int64_t ij = 0; ij < p * p; ++ij) {
    if (roles[ij / p] == 1 && roles[ij % p] == 1) of_interest.push_back(c[ij]);
  }
  return of_interest;
}

const std::vector<int64_t> role_lists[] = {
    {-1, 1},
    {1, -1, 1},
    {1, 0, -1, 7},
    {-1, -1, 1, 1, 1},
    {1, 1, -1, 1, -2, -1, -1},
    {1, -1, 1, -1, 1, -1, 1, -1, 1, -1, 0, 1, 1, 1, -1, 1, 1, 1, -1, 1},
};

TYPED_TEST(EachPrecision, PartialCovarianceAndCorrelation) {
  using T = TypeParam;
  for (const auto& roles : role_lists) {
    const auto p = static_cast<int64_t>(roles.size());
    const auto m = static_cast<int64_t>(std::count(roles.begin(), roles.end(), 1));
    const auto c = covariance(p), truth = eliminated(c, p, roles);
    for (int way = 0; way < 36; ++way) {
      Choices choose{way};
      const int64_t source_storage = choose(3), cov_storage = choose(3);
      const int64_t cor_storage = (cov_storage + 1) % 3;
      const bool from_cor = choose(2), wide = choose(2);
      SCOPED_TRACE(testing::Message() << "p " << p << " way " << way);
      const auto source = stored<T>(p, source_storage, from_cor ? scaled(c, p, -0.5L) : c);
      std::vector<T> cov(m * m, 99), cor(m * m, 99);
      Task<T> task(p, 1, SS_COLUMNS, nullptr, wide);
      task.set(from_cor ? SS_PARAM_COR : SS_PARAM_COV, source)
          .set(from_cor ? SS_PARAM_COR_STORAGE : SS_PARAM_COV_STORAGE, {source_storage})
          .set_integers(SS_PARAM_PARTIAL_INDEX_ARRAY, roles)
          .set(SS_PARAM_PARTIAL_COV, cov)
          .set(SS_PARAM_PARTIAL_COV_STORAGE, {cov_storage})
          .set(SS_PARAM_PARTIAL_COR, cor)
          .set(SS_PARAM_PARTIAL_COR_STORAGE, {cor_storage});
      const auto check = [&](std::vector<T> found, std::vector<T> e) {
        e.resize(m * m, 99);
        for (int64_t i = 0; i < m * m; ++i) {
          EXPECT_NEAR(found[i], e[i], 8 * std::numeric_limits<T>::epsilon() * (p + e[i])) << i;
        }
      };
      const auto run = [&](uint64_t estimates) {
        return Entries<T>::partial_covariance(task, estimates, SS_METHOD_FAST, nullptr);
      };
      ASSERT_EQ(run(SS_EST_PARTIAL_COV), SS_OK);
      check(cov, stored<T>(m, cov_storage, truth));
      EXPECT_EQ(cor[0], 99) << "not asked for";
      std::fill(cov.begin(), cov.end(), T(99));
      ASSERT_EQ(run(SS_EST_PARTIAL_COR), SS_OK);
      check(cor, stored<T>(m, cor_storage, scaled(truth, m, -0.5L)));
      EXPECT_EQ(cov[0], 99) << "not asked for";
    }
  }
}

}  // namespace
