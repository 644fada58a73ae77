// Means and covariances of groups, bit for bit against a plain loop in the order that the updates
// have.
#include <cmath>
#include <random>

#include "support.hpp"

using namespace orv_test;

namespace {

constexpr uint64_t both = SS_EST_POOLED | SS_EST_GROUP;

struct Case {
  int64_t p, n, groups, layout = SS_COLUMNS, storage = SS_MATRIX_FULL;
  bool weighted = false, masked = false, wide = false;
};

/// Every other group is wanted; the first observations of each group have no weight.
template <class T>
struct Data : Case {
  explicit Data(const Case& c) : Case(c), x(p * n) {
    std::mt19937 random(static_cast<uint32_t>(p));
    const auto uniform = [&] { return static_cast<T>(random()) * T(0x1p-32); };
    for (int64_t i = 0; i < n; ++i) {
      group.push_back(i < groups ? groups - 1 - i : static_cast<int64_t>(random() % groups));
      const T common = uniform();
      for (int64_t j = 0; j < p; ++j) x[place(i, j)] = 3 + j + common + uniform() * (j + 1);
      const bool zero = i < 2 * groups || i % 13 == 5;
      weights.push_back(!weighted ? 1 : zero ? 0 : T(0.25) + uniform());
    }
    for (int64_t j = 0; j < p; ++j) mask.push_back(!masked || j % 3 != 1);
    for (int64_t g = 0; g < groups; ++g) wanted.push_back(g % 2 == 0);
  }
  int64_t place(int64_t i, int64_t j) const { return layout == SS_ROWS ? j * n + i : i * p + j; }
  T at(int64_t i, int64_t j) const { return x[place(i, j)]; }
  std::vector<int64_t> members(int64_t g) const {
    std::vector<int64_t> of_group;
    for (int64_t i = 0; i < n; ++i) {
      if (group[i] == g) of_group.push_back(i);
    }
    return of_group;
  }
  int64_t size() const { return storage == 0 ? p * p : p * (p + 1) / 2; }

  std::vector<T> x, weights;
  std::vector<int64_t> group, mask, wanted;
};

/// Means times a, the scatter, W and W - W2 / W.
template <class T>
struct Sums {
  explicit Sums(int64_t p) : mean(p), scatter(p * p) {}
  std::vector<T> mean, scatter;
  T a = 0, b = 0;
};

template <class T>
Sums<T> updates(const Data<T>& d, int64_t group) {
  Sums<T> s(d.p);
  T squares = 0;
  for (const int64_t i : d.members(group)) {
    const T w = d.weights[i];
    if (s.a == 0 && !(w > 0)) continue;
    const T r = 1 / (w + s.a);
    const auto deviation = [&](int64_t j) { return d.at(i, j) - s.mean[j]; };
    for (int64_t jk = 0; jk < d.p * d.p; ++jk) {
      s.scatter[jk] += deviation(jk / d.p) * s.a * w * r * deviation(jk % d.p);
    }
    for (int64_t j = 0; j < d.p; ++j) s.mean[j] = r * (s.a * s.mean[j] + w * d.at(i, j));
    s.a += w, squares += w * w;
  }
  for (T& m : s.mean) m *= s.a;
  s.b = s.a - squares / s.a;
  return s;
}

/// All results in one array, which is full of -77 at first: the pooled mean and matrix, then the
/// means and matrices of the wanted groups.
template <class T>
struct Results : std::vector<T> {
  Results(const Results&) = delete;
  explicit Results(const Data<T>& d)
      : std::vector<T>((d.p + d.size()) * (1 + (d.groups + 1) / 2), -77),
        pooled_mean(this->data()),
        pooled_cov(pooled_mean + d.p),
        means(pooled_cov + d.size()),
        covs(means + d.p * ((d.groups + 1) / 2)) {}
  T *pooled_mean, *pooled_cov, *means, *covs;
};

template <class T, class OfScatter>
void put(const Data<T>& d, const Sums<T>& s, T* mean, T* cov, OfScatter of_scatter) {
  for (int64_t j = 0; j < d.p; ++j) {
    if (d.mask[j] != 0) mean[j] = s.mean[j] / s.a;
  }
  for_each_stored(d.storage, d.p, [&](int64_t i, int64_t j) {
    if (d.mask[i] == 0 || d.mask[j] == 0) return;
    (d.storage == SS_MATRIX_FULL ? cov[i * d.p + j] : *cov++) = of_scatter(s.scatter[i * d.p + j]);
  });
}

template <class T>
std::vector<T> expected(const Data<T>& d) {
  Results<T> all(d);
  Sums<T> total(d.p);
  for (int64_t g = 0; g < d.groups; ++g) {
    const Sums<T> s = updates(d, g);
    if (d.wanted[g] != 0) {
      put(d, s, all.means + g / 2 * d.p, all.covs + g / 2 * d.size(),
          [&](T x) { return x * (1 / s.b); });
    }
    for (int64_t j = 0; j < d.p; ++j) total.mean[j] += s.mean[j];
    for (int64_t jk = 0; jk < d.p * d.p; ++jk) total.scatter[jk] += s.scatter[jk];
    total.a += s.a, total.b += s.b;
  }
  put(d, total, all.pooled_mean, all.pooled_cov, [&](T x) { return x / total.b; });
  return all;
}

/// A task with places for all results.
template <class T>
struct Pooling {
  explicit Pooling(const Data<T>& d) : results(d), task(d.p, d.n, d.layout, d.x.data(), d.wide) {
    task.set_integers(SS_PARAM_GROUP_INDICES, d.group)
        .set_integers(SS_PARAM_GROUP_OUTPUT_INDICES, d.wanted)
        .set(SS_PARAM_POOLED_COV_STORAGE, {d.storage})
        .set(SS_PARAM_GROUP_COV_STORAGE, {d.storage})
        .set(SS_PARAM_POOLED_MEAN, results.pooled_mean)
        .set(SS_PARAM_POOLED_COV, results.pooled_cov)
        .set(SS_PARAM_GROUP_MEANS, results.means)
        .set(SS_PARAM_GROUP_COV, results.covs);
    if (d.weighted) task.set(SS_PARAM_WEIGHTS, d.weights);
    if (d.masked) task.set_integers(SS_PARAM_VARIABLE_MASK, d.mask);
  }
  int32_t run(const SSThreadServices* services = orv_threads_serial()) {
    return Entries<T>::pooled_covariance(task, both, SS_METHOD_ONE_PASS, services);
  }
  Results<T> results;
  Task<T> task;
};

template <class T>
class Pooled : public testing::Test {};
TYPED_TEST_SUITE(Pooled, Precisions);

TYPED_TEST(Pooled, GivesMeansAndCovariances) {
  using T = TypeParam;
  const Case shapes[] = {{1, 40, 3}, {2, 60, 1},  {3, 35, 4},   {4, 90, 2},  {5, 200, 6},
                         {8, 64, 2}, {9, 100, 3}, {10, 130, 5}, {16, 90, 2}, {20, 333, 7}};
  for (Case c : shapes) {
    for (int way = 0; way < 48; ++way) {
      SCOPED_TRACE(testing::Message() << "p " << c.p << " way " << way);
      Choices choose{way};
      c.layout = choose(2) ? SS_ROWS : SS_COLUMNS;
      c.weighted = choose(2), c.masked = choose(2), c.wide = choose(2);
      c.storage = choose(3);
      const Data<T> d(c);
      Pooling<T> found(d);
      ASSERT_EQ(found.run(), SS_OK);
      EXPECT_EQ(found.results, expected(d));
    }
  }
}

TYPED_TEST(Pooled, GivesTheSameBitsForAnyNumberOfThreads) {
  using T = TypeParam;
  const Data<T> d({12, 5000, 23});
  Pooling<T> serial(d);
  ASSERT_EQ(serial.run(), SS_OK);
  for (int threads = 1; threads <= 8; ++threads) {
    orv_threads_set_count(threads);
    for (int repeat = 0; repeat < 5; ++repeat) {
      Pooling<T> parallel(d);
      ASSERT_EQ(parallel.run(orv_threads_pool()), SS_OK);
      EXPECT_EQ(parallel.results, serial.results) << threads << " threads";
    }
  }
  orv_threads_set_count(0);
}

TEST(PooledCases, OneObservationHasNoCovarianceAndNoneNoMean) {
  Data<double> d({1, 3, 3});
  d.x = {3, 5, 4};
  d.group = {0, 2, 0};
  Pooling<double> empty(d);
  EXPECT_EQ(empty.run(), SS_OK);
  EXPECT_TRUE(std::isnan(*empty.results.pooled_cov)) << "nobody in group 1";
  EXPECT_EQ(empty.results.covs[0], 0.5);
  EXPECT_TRUE(std::isnan(empty.results.covs[1])) << "one in group 2";
  d.group = {0, 0, 1};
  Pooling<double> dense(d);
  EXPECT_EQ(dense.run(), SS_OK);
  EXPECT_EQ(*dense.results.pooled_cov, 2) << "scatter over n - groups";
  EXPECT_EQ(*dense.results.pooled_mean, 4);
  const double weights[] = {1, 3, 2};
  dense.task.set(SS_PARAM_WEIGHTS, weights);
  EXPECT_EQ(dense.run(), SS_OK);
  EXPECT_EQ(*dense.results.pooled_cov, 3 / 1.5) << "scatter over the sum of W - W2 / W";
  EXPECT_EQ(*dense.results.pooled_mean, 26. / 6);
}

}  // namespace
