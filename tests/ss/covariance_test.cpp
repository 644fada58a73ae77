// SPDX-License-Identifier: MIT
// Means and covariances of groups, bit for bit against a plain loop in the order that the updates
// have. Partial covariance and correlation against elimination, one variable at a time, in long
// double.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "support.hpp"

using namespace orv_test;

namespace {

/// Observations in groups, every other of which is wanted.
template <class T>
struct Grouped : Data<T> {
  Grouped(int variables, int observations, int count, WeightKind weights = unweighted)
      : Data<T>(variables, observations, weights), groups(count), mask(variables, 1) {
    std::mt19937 random(variables);
    for (int i = 0; i < observations; ++i) {
      group.push_back(i < groups ? groups - 1 - i : static_cast<int64_t>(random() % groups));
    }
    for (int g = 0; g < groups; ++g) wanted.push_back(g % 2 == 0);
  }
  int64_t size() const { return storage == 0 ? this->p * this->p : this->p * (this->p + 1) / 2; }

  int groups;
  std::vector<int64_t> group, mask, wanted;
  int64_t layout = SS_COLUMNS, storage = SS_MATRIX_FULL;
  bool wide = false;
};

/// Means times a, the scatter, W and W - W2 / W.
template <class T>
struct Sums {
  explicit Sums(int64_t p) : mean(p), scatter(p * p) {}
  std::vector<T> mean, scatter;
  T a = 0, b = 0;
};

template <class T>
Sums<T> updates(const Grouped<T>& d, int64_t group) {
  Sums<T> s(d.p);
  T squares = 0;
  for (int64_t i = 0; i < d.n; ++i) {
    const T w = d.w[i];
    if (d.group[i] != group || (s.a == 0 && !(w > 0))) continue;
    const T r = 1 / (w + s.a);
    const auto deviation = [&](int64_t j) { return d(i, j) - s.mean[j]; };
    for (int64_t jk = 0; jk < d.p * d.p; ++jk) {
      s.scatter[jk] += deviation(jk / d.p) * s.a * w * r * deviation(jk % d.p);
    }
    for (int64_t j = 0; j < d.p; ++j) s.mean[j] = r * (s.a * s.mean[j] + w * d(i, j));
    s.a += w, squares += w * w;
  }
  for (T& m : s.mean) m *= s.a;
  s.b = s.a - squares / s.a;
  return s;
}

/// Pooled mean and matrix, means and matrices of the wanted groups.
template <class T>
using Results = std::array<std::vector<T>, 4>;

template <class T>
Results<T> marked(const Grouped<T>& d) {
  const auto full = [](int64_t size) { return std::vector<T>(size, -77); };
  const int64_t wanted = (d.groups + 1) / 2;
  return {full(d.p), full(d.size()), full(d.p * wanted), full(d.size() * wanted)};
}

template <class T, class OfScatter>
void put(const Grouped<T>& d, const Sums<T>& s, T* mean, T* cov, OfScatter of_scatter) {
  for (int64_t j = 0; j < d.p; ++j) {
    if (d.mask[j] != 0) mean[j] = s.mean[j] / s.a;
  }
  for_each_stored(d.storage, d.p, [&](int64_t i, int64_t j) {
    if (d.mask[i] == 0 || d.mask[j] == 0) return;
    (d.storage == SS_MATRIX_FULL ? cov[i * d.p + j] : *cov++) = of_scatter(s.scatter[i * d.p + j]);
  });
}

template <class T>
Results<T> expected(const Grouped<T>& d) {
  Results<T> all = marked(d);
  Sums<T> total(d.p);
  for (int64_t g = 0; g < d.groups; ++g) {
    const Sums<T> s = updates(d, g);
    if (d.wanted[g] != 0) {
      put(d, s, &all[2][g / 2 * d.p], &all[3][g / 2 * d.size()],
          [&](T x) { return x * (1 / s.b); });
    }
    for (int64_t j = 0; j < d.p; ++j) total.mean[j] += s.mean[j];
    for (int64_t jk = 0; jk < d.p * d.p; ++jk) total.scatter[jk] += s.scatter[jk];
    total.a += s.a, total.b += s.b;
  }
  put(d, total, all[0].data(), all[1].data(), [&](T x) { return x / total.b; });
  return all;
}

template <class T>
Results<T> found(const Grouped<T>& d, const SSThreadServices* services = orv_threads_serial()) {
  Results<T> results = marked(d);
  const std::vector<T> x = laid_out(d.layout, d.p, d.x);
  Task<T> task(d.p, d.n, d.layout, x.data(), d.wide);
  task.set_integers(SS_PARAM_GROUP_INDICES, d.group)
      .set_integers(SS_PARAM_GROUP_OUTPUT_INDICES, d.wanted)
      .set(SS_PARAM_POOLED_COV_STORAGE, {d.storage})
      .set(SS_PARAM_GROUP_COV_STORAGE, {d.storage})
      .set(SS_PARAM_POOLED_MEAN, results[0])
      .set(SS_PARAM_POOLED_COV, results[1])
      .set(SS_PARAM_GROUP_MEANS, results[2])
      .set(SS_PARAM_GROUP_COV, results[3]);
  if (d.kind != unweighted) task.set(SS_PARAM_WEIGHTS, d.w);
  if (std::ranges::count(d.mask, 0) > 0) task.set_integers(SS_PARAM_VARIABLE_MASK, d.mask);
  EXPECT_EQ(Entries<T>::pooled_covariance(task, SS_EST_POOLED | SS_EST_GROUP, SS_METHOD_ONE_PASS,
                                          services),
            SS_OK);
  return results;
}

TYPED_TEST(EachPrecision, PooledMeansAndCovariances) {
  const std::array<int, 3> shapes[] = {{1, 40, 3},  {2, 60, 1},  {3, 35, 4},  {4, 90, 2},
                                       {5, 200, 6}, {8, 64, 2},  {9, 100, 3}, {10, 130, 5},
                                       {16, 90, 2}, {20, 333, 7}};
  for (const auto& [p, n, groups] : shapes) {
    for (int way = 0; way < 72; ++way) {
      SCOPED_TRACE(testing::Message() << "p " << p << " way " << way);
      Choices choose{way};
      Grouped<TypeParam> d(p, n, groups, static_cast<WeightKind>(choose(3)));
      d.layout = choose(2) ? SS_ROWS : SS_COLUMNS;
      for (int j = 1, masked = choose(2); masked && j < p; j += 3) d.mask[j] = 0;
      d.wide = choose(2);
      d.storage = choose(3);
      EXPECT_EQ(found(d), expected(d));
    }
  }
}

TYPED_TEST(EachPrecision, PooledBitsOfAnyNumberOfThreads) {
  const Grouped<TypeParam> d(12, 5000, 23);
  const auto serial = found(d);
  for (int threads = 1; threads <= 8; ++threads) {
    orv_threads_set_count(threads);
    for (int repeat = 0; repeat < 5; ++repeat) {
      EXPECT_EQ(found(d, orv_threads_pool()), serial) << threads << " threads";
    }
  }
  orv_threads_set_count(0);
}

TEST(PooledCases, OneObservationHasNoCovarianceAndNoneNoMean) {
  Grouped<double> d(1, 3, 3);
  d.x = {3, 5, 4};
  d.group = {0, 2, 0};
  const auto empty = found(d);
  EXPECT_TRUE(std::isnan(empty[1][0])) << "nobody in group 1";
  EXPECT_EQ(empty[3][0], 0.5);
  EXPECT_TRUE(std::isnan(empty[3][1])) << "one in group 2";
}

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

/// Off the diagonal divided by the roots of the diagonal's elements.
std::vector<long double> scaled(std::vector<long double> c, int64_t p) {
  for (int64_t ij = 0; ij < p * p; ++ij) {
    const int64_t i = ij / p, j = ij % p;
    if (i != j) c[ij] /= std::sqrt(c[i * p + i] * c[j * p + j]);
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
    {1, -1, 1, -1, 1, -1, 1, -1, 1, -1, 0, 1, 1, 1, -1, 1, 1, 1, -1, 1}};

TYPED_TEST(EachPrecision, PartialCovarianceAndCorrelation) {
  using T = TypeParam;
  for (const auto& roles : role_lists) {
    const auto p = static_cast<int64_t>(roles.size());
    const auto m = static_cast<int64_t>(std::count(roles.begin(), roles.end(), 1));
    const auto c = covariance(p), truth = eliminated(c, p, roles);
    for (int way = 0; way < 72; ++way) {
      Choices choose{way};
      const int64_t source_storage = choose(3), cov_storage = choose(3);
      const int64_t cor_storage = (cov_storage + 1) % 3;
      const bool from_cor = choose(2), wide = choose(2), cor_asked = choose(2);
      SCOPED_TRACE(testing::Message() << "p " << p << " way " << way);
      const auto source = stored<T>(p, source_storage, from_cor ? scaled(c, p) : c);
      std::vector<T> cov(m * m, 99), cor(m * m, 99);
      Task<T> task(p, 1, SS_COLUMNS, nullptr, wide);
      task.set(from_cor ? SS_PARAM_COR : SS_PARAM_COV, source)
          .set(from_cor ? SS_PARAM_COR_STORAGE : SS_PARAM_COV_STORAGE, {source_storage})
          .set_integers(SS_PARAM_PARTIAL_INDEX_ARRAY, roles)
          .set(SS_PARAM_PARTIAL_COV, cov)
          .set(SS_PARAM_PARTIAL_COV_STORAGE, {cov_storage})
          .set(SS_PARAM_PARTIAL_COR, cor)
          .set(SS_PARAM_PARTIAL_COR_STORAGE, {cor_storage});
      const uint64_t asked = cor_asked ? SS_EST_PARTIAL_COR : SS_EST_PARTIAL_COV;
      EXPECT_EQ(Entries<T>::partial_covariance(task, asked, SS_METHOD_FAST, nullptr), SS_OK);
      auto expected = cor_asked ? stored<T>(m, cor_storage, scaled(truth, m))
                                : stored<T>(m, cov_storage, truth);
      expected.resize(m * m, 99);
      const auto& found = cor_asked ? cor : cov;
      for (int64_t i = 0; i < m * m; ++i) {
        const T bound = 8 * std::numeric_limits<T>::epsilon() * (p + expected[i]);
        EXPECT_NEAR(found[i], expected[i], bound) << i;
      }
      EXPECT_EQ(cor_asked ? cov : cor, std::vector<T>(m * m, 99)) << "not asked for";
    }
  }
}

}  // namespace
