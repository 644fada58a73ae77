// SPDX-License-Identifier: MIT
// Mahalanobis distances and outlier detection, against their definitions in long double, published
// results for classical data, and contaminated samples whose outliers are known.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <numeric>
#include <vector>

#include "orv/scalar.h"
#include "support.hpp"

using namespace orv_test;

namespace {

using Real = long double;

template <class T>
constexpr T not_a_number = std::numeric_limits<T>::quiet_NaN();

/// A positive definite matrix by columns, whose lower triangle holds NaNs.
template <class T>
std::vector<T> some_inverse(int p) {
  std::vector<T> a;
  for (int k = 0; k < p * p; ++k) {
    const int i = k % p, j = k / p;
    a.push_back(i > j ? not_a_number<T> : i == j ? T(1.5) : T(i % 2 ? -0.5 : 0.25) / T(p));
  }
  return a;
}

TYPED_TEST(EachPrecision, MahalanobisDistances) {
  using T = TypeParam;
  for (const int p : {1, 2, 3, 4, 5, 8, 13, 50, 1025}) {
    const int n = p > 1000 ? 21 : 700;
    const Data<T> data(p, n, unweighted);
    const std::vector<T> a = some_inverse<T>(p), mean(p, T(1.25));
    std::vector<T> x = data.x;
    const int odd = n / 2;
    x[odd * p + p / 2] = not_a_number<T>;
    std::vector<Real> expected;
    for (int i = 0; i < n; ++i) {
      Real sum = 0;
      for (int j = 0; j < p; ++j) {
        for (int k = 0; k <= j; ++k) {
          sum += (j == k ? 1 : 2) * (x[i * p + j] - Real(1.25)) * a[j * p + k] *
                 (x[i * p + k] - Real(1.25));
        }
      }
      expected.push_back(std::sqrt(sum));
    }
    for (int way = 0; way < 48; ++way) {
      SCOPED_TRACE(testing::Message() << "p " << p << " way " << way);
      Choices choose{way};
      const int64_t layout = choose(2) ? SS_ROWS : SS_COLUMNS;
      const bool wide = choose(2);
      const int64_t sizes[] = {0, 1, 2 * p, 7 * p + 1, 2 * p * n, 5 * p * n};
      const int64_t size = sizes[choose(6)];
      const int64_t first = choose(2) ? 3 : 0, end = first == 0 ? n : n - 2;
      const std::vector<T> laid = laid_out<T>(layout, p, x);
      std::vector<T> out(n, -1), buffer(size);
      const int64_t numbers[] = {first, end, size};
      Task<T> task(p, n, layout, laid.data(), wide);
      SSTask* const record = task;
      const void* const words[] = {&numbers[0], &numbers[1], mean.data(),   a.data(),
                                   out.data(),  nullptr,     buffer.data(), &numbers[2]};
      std::memcpy(record->mahalanobis_block, words, sizeof words);
      ASSERT_EQ(Entries<T>::mahalanobis(task), SS_OK);
      for (int i = 0; i < n; ++i) {
        if (i == odd) {
          ASSERT_TRUE(std::isnan(out[i - first]));
        } else if (i < first || i >= end) {
          ASSERT_EQ(out[i < first ? n - 1 - i : i], -1);
        } else {
          const auto bound = static_cast<double>(expected[i]) * std::numeric_limits<T>::epsilon();
          ASSERT_NEAR(out[i - first], static_cast<double>(expected[i]), (8 + p) * bound) << i;
        }
      }
    }
  }
}

// ---- BACON --------------------------------------------------------------------------------------

struct Parameters {
  int start = 2;
  double alpha = 0.05, accuracy = 0.005;
};

struct Detected {
  int32_t status;
  std::vector<double> weights;
};

/// Of observations one after another.
template <class T>
Detected detect(int64_t p, const std::vector<T>& x, const std::vector<T>& weights,
                const Parameters& how, int64_t layout = SS_COLUMNS,
                const SSThreadServices* services = orv_threads_serial(), bool wide = false) {
  const auto n = static_cast<int64_t>(x.size()) / p;
  const std::vector<T> laid = laid_out<T>(layout, p, x);
  const T given[] = {T(how.start), T(how.alpha), T(how.accuracy)};
  std::vector<T> result(n, -1);
  Task<T> task(p, n, layout, laid.data(), wide);
  if (!weights.empty()) task.set(SS_PARAM_WEIGHTS, weights);
  task.set(SS_PARAM_OUTLIER_PARAM_COUNT, {3}).set(SS_PARAM_OUTLIER_PARAMS, given);
  task.set(SS_PARAM_OUTLIER_WEIGHTS, result);
  const int32_t status = Entries<T>::outliers(task, 0, SS_METHOD_BACON, services);
  return {status, {result.begin(), result.end()}};
}

/// The method in long double, as plainly as it can be told.
class Reference {
 public:
  Reference(size_t p, std::vector<Real> x, std::vector<Real> weights)
      : p_(p), n_(x.size() / p), x_(std::move(x)), prior_(std::move(weights)) {}

  Detected detect(const Parameters& how, const std::vector<Real>& centre) {
    std::vector<Real> d;
    if (how.start == 1) {
      measure(prior_);
      d = distances();
    } else {
      for (size_t i = 0; i < n_; ++i) {
        Real sum = 0;
        for (size_t j = 0; j < p_; ++j) {
          const Real u = x_[i * p_ + j] - centre[j];
          sum += u * u;
        }
        d.push_back(std::sqrt(sum));
      }
    }
    std::vector<size_t> order(n_);
    std::iota(order.begin(), order.end(), size_t{0});
    std::ranges::stable_sort(order, {}, [&](size_t i) { return d[i]; });
    std::vector<Real> w(n_);
    size_t r = 5 * p_;
    for (size_t k = 0; k < r; ++k) w[order[k]] = prior_[order[k]];
    const Real n = static_cast<Real>(n_), p = static_cast<Real>(p_);
    const Real chi = std::sqrt(static_cast<Real>(__zokdChi2ICDF(double(p_), 1 - how.alpha)));
    const Real h = std::floor((n + p + 1) / 2), c_np = 1 + (p + 1) / (n - p) + 2 / (n - 1 - 3 * p);
    for (Real change = 1; change >= how.accuracy;) {
      measure(w);
      d = distances();
      const Real before = static_cast<Real>(r);
      const Real limit = (std::max<Real>(0, (h - before) / (h + before)) + c_np) * chi;
      r = 0;
      for (size_t i = 0; i < n_; ++i) {
        margin = std::min(margin, std::fabs(d[i] / limit - 1));
        w[i] = d[i] < limit ? prior_[i] : 0;
        r += d[i] < limit;
      }
      change = r == n_ ? 0 : std::fabs(static_cast<Real>(r) - before) / before;
    }
    return {r > 5 * p_ || r == n_ ? SS_OK : SS_NOT_CONVERGED, {w.begin(), w.end()}};
  }

  Real margin = 1;  // of the closest decision

 private:
  /// Mean, and the covariance's inverse.
  void measure(const std::vector<Real>& w) {
    Real sum = 0, squares = 0;
    mean_.assign(p_, 0);
    for (size_t i = 0; i < n_; ++i) {
      sum += w[i], squares += w[i] * w[i];
      for (size_t j = 0; j < p_; ++j) mean_[j] += w[i] * x_[i * p_ + j];
    }
    for (Real& m : mean_) m /= sum;
    const size_t width = 2 * p_;
    std::vector<Real> c(p_ * width);
    for (size_t i = 0; i < n_; ++i) {
      for (size_t j = 0; j < p_; ++j) {
        for (size_t k = 0; k < p_; ++k) {
          c[j * width + k] += w[i] * (x_[i * p_ + j] - mean_[j]) * (x_[i * p_ + k] - mean_[k]) /
                              (sum - squares / sum);
        }
      }
    }
    for (size_t j = 0; j < p_; ++j) c[j * width + p_ + j] = 1;
    for (size_t j = 0; j < p_; ++j) {
      const Real pivot = c[j * width + j];
      for (size_t k = 0; k < width; ++k) c[j * width + k] /= pivot;
      for (size_t i = 0; i < p_; ++i) {
        const Real factor = c[i * width + j];
        for (size_t k = 0; k < width && i != j; ++k) c[i * width + k] -= factor * c[j * width + k];
      }
    }
    inverse_.resize(p_ * p_);
    for (size_t j = 0; j < p_ * p_; ++j) inverse_[j] = c[j / p_ * width + p_ + j % p_];
  }

  std::vector<Real> distances() const {
    std::vector<Real> d;
    for (size_t i = 0; i < n_; ++i) {
      Real sum = 0;
      for (size_t j = 0; j < p_ * p_; ++j) {
        sum += (x_[i * p_ + j / p_] - mean_[j / p_]) * inverse_[j] *
               (x_[i * p_ + j % p_] - mean_[j % p_]);
      }
      d.push_back(std::sqrt(sum));
    }
    return d;
  }

  size_t p_, n_;
  std::vector<Real> x_, prior_, mean_, inverse_;
};

/// Normal numbers that depend on each other; the last part of the observations lies elsewhere.
template <class T>
std::vector<T> contaminated(int p, int n, double part, double shift, unsigned seed = 1) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal;
  std::vector<T> x;
  for (int i = 0; i < n; ++i) {
    double before = 0;
    for (int j = 0; j < p; ++j) {
      before = 0.5 * before + normal(random);
      x.push_back(T(10 * (j + 1) + before + (i >= n - std::lround(part * n) ? shift : 0)));
    }
  }
  return x;
}

template <class T>
std::vector<Real> medians(int64_t p, const std::vector<T>& x, const std::vector<T>& weights) {
  std::vector<T> result(p);
  const T middle = T(0.5);
  Task<T> task(p, static_cast<int64_t>(x.size()) / p, SS_COLUMNS, x.data());
  task.set(SS_PARAM_WEIGHTS, weights).set(SS_PARAM_QUANT_ORDERS, &middle);
  task.set(SS_PARAM_QUANTILES, result);
  EXPECT_EQ(Entries<T>::weighted_quantile(task, 0, 0, nullptr), SS_OK);
  return {result.begin(), result.end()};
}

TYPED_TEST(EachPrecision, OutliersByDefinition) {
  using T = TypeParam;
  const std::pair<int, int> shapes[] = {{1, 5},   {1, 60}, {2, 10},   {3, 40},
                                        {5, 300}, {8, 41}, {10, 999}, {4, 3000}};
  const Parameters hows[] = {
      {2, 0.05, 0.005}, {1, 0.05, 0.005}, {2, 0.001, 1e-9}, {1, 0.3, 0.5}, {2, 1e-5, 0.005}};
  const Real close = 300 * std::numeric_limits<T>::epsilon();
  int decided = 0, ways = 0;
  for (const auto& [p, n] : shapes) {
    for (int way = 0; way < 60; ++way, ++ways) {
      SCOPED_TRACE(testing::Message() << "p " << p << " n " << n << " way " << way);
      Choices choose{way};
      Parameters how = hows[choose(5)];
      const double part = 0.1 * choose(3);
      const bool weighted = choose(2), rows = choose(2);
      const std::vector<T> x = contaminated<T>(p, n, part, 4, static_cast<unsigned>(n));
      std::vector<T> w(n, 1);
      for (int i = 0; weighted && i < n; ++i) w[i] = T(0.5 + i % 7);
      how.alpha = double(T(how.alpha));
      Reference reference(p, {x.begin(), x.end()}, {w.begin(), w.end()});
      // Unweighted, the weighted median is the plain one.
      const Detected expected = reference.detect(how, medians(p, x, w));
      const Detected found = detect(p, x, weighted ? w : std::vector<T>(), how,
                                    rows ? SS_ROWS : SS_COLUMNS, orv_threads_serial(), weighted);
      if (reference.margin < close) continue;  // rounding decides
      ++decided;
      ASSERT_EQ(found.status, expected.status);
      ASSERT_EQ(found.weights, expected.weights);
    }
  }
  EXPECT_GT(decided, ways * 8 / 10);
}

/// A table of numbers with a head, its first `columns` columns.
std::vector<double> table(const char* name, size_t columns) {
  std::ifstream file(std::string(ORV_TEST_DATA "/") + name);
  std::string line, cell;
  std::getline(file, line);
  std::vector<double> x;
  while (std::getline(file, line)) {
    std::istringstream cells(line);
    for (size_t j = 0; j < columns && std::getline(cells, cell, ','); ++j) {
      x.push_back(std::stod(cell));
    }
  }
  return x;
}

std::vector<int> outliers_of(const Detected& found) {
  std::vector<int> numbers;
  for (size_t i = 0; i < found.weights.size(); ++i) {
    if (found.weights[i] == 0) numbers.push_back(static_cast<int>(i) + 1);
  }
  return numbers;
}

TYPED_TEST(EachPrecision, OutliersOfClassicalData) {
  using T = TypeParam;
  const struct {
    const char* name;
    size_t p;
    Parameters how;
    std::vector<int> outliers;
  } sets[] = {
      // The authors' own example, alpha / n: the fourteen that Hawkins, Bradu and Kass (1984) put
      // in.
      {"hbk.csv", 3, {2, 0.05 / 75}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
      {"hbk.csv", 3, {1, 0.05 / 75}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
      // All 21 are good ones, one more than the first set has.
      {"stackloss.csv", 4, {2, 0.05}, {}},
  };
  for (const auto& set : sets) {
    const std::vector<double> x = table(set.name, set.p);
    ASSERT_EQ(x.size(), set.p * (set.name[0] == 'h' ? 75 : 21));
    const Detected found = detect<T>(set.p, {x.begin(), x.end()}, {}, set.how);
    EXPECT_EQ(found.status, SS_OK) << set.name;
    EXPECT_EQ(outliers_of(found), set.outliers) << set.name;
  }
}

/// Of the first n and of all others, how many are outliers.
std::pair<int, int> outliers_among(const Detected& found, int n) {
  const auto middle = found.weights.begin() + n;
  return {static_cast<int>(std::count(found.weights.begin(), middle, 0)),
          static_cast<int>(std::count(middle, found.weights.end(), 0))};
}

// Outliers in a cluster, which carry mean and covariance away: the medians still lead to them where
// they are many.
TYPED_TEST(EachPrecision, OutliersOfContaminatedData) {
  using T = TypeParam;
  constexpr int n = 1000;
  for (const int p : {2, 5, 10}) {
    for (const double part : {0.1, 0.2, 0.3, 0.4, 0.45}) {
      SCOPED_TRACE(testing::Message() << "p " << p << " part " << part);
      const auto x = contaminated<T>(p, n, part, 20);
      const int clean = n - static_cast<int>(std::lround(part * n));
      const Parameters by_medians = {2, 0.05 / n}, by_mean = {1, 0.05 / n};
      const Detected found = detect<T>(p, x, {}, by_medians);
      EXPECT_EQ(found.status, SS_OK);
      EXPECT_EQ(outliers_among(found, clean), std::pair(0, n - clean));
      if (part > 0.1) continue;
      EXPECT_EQ(outliers_among(detect<T>(p, x, {}, by_mean), clean), std::pair(0, n - clean));
    }
  }
}

// Of clean normal data, at the default level and at that of the method's authors.
TYPED_TEST(EachPrecision, OutliersOfCleanData) {
  using T = TypeParam;
  constexpr int n = 2000;
  for (const int p : {2, 5, 10, 20}) {
    int by_default = 0, by_authors = 0;
    for (unsigned seed = 1; seed <= 10; ++seed) {
      const auto x = contaminated<T>(p, n, 0, 0, seed);
      by_default += outliers_among(detect<T>(p, x, {}, {}), n).first;
      by_authors += outliers_among(detect<T>(p, x, {}, {2, 0.05 / n}), n).first;
    }
    EXPECT_GT(by_default, 10 * n * 0.04) << p;
    EXPECT_LT(by_default, 10 * n * 0.20) << p;
    EXPECT_LE(by_authors, 3) << p;
  }
}

TYPED_TEST(EachPrecision, OutliersAtTheLimits) {
  using T = TypeParam;
  const auto status = [](int64_t p, const std::vector<T>& x, Parameters how = {}) {
    return detect<T>(p, x, {}, how).status;
  };
  const auto clean = contaminated<T>(3, 100, 0, 0);
  EXPECT_EQ(status(20, {clean.begin(), clean.begin() + 280}), SS_BAD_OBSERVATION_COUNT);
  EXPECT_EQ(status(3, {clean.begin(), clean.begin() + 42}), SS_BAD_OBSERVATION_COUNT);
  EXPECT_EQ(status(3, {clean.begin(), clean.begin() + 45}), SS_OK);  // all are good
  auto shifted = std::vector<T>(clean.begin(), clean.begin() + 45);
  shifted[7] = 1000;
  EXPECT_EQ(status(3, shifted, {2, 0.5}), SS_NOT_CONVERGED);  // 14 are left
  EXPECT_EQ(status(3, clean, {2, 1}), SS_NOT_CONVERGED);      // none
  for (const double alpha : {0.0, 1e-17, 1e-300}) {           // no distance is large enough
    EXPECT_EQ(outliers_of(detect<T>(3, shifted, {}, {2, alpha})), std::vector<int>());
  }
  EXPECT_EQ(status(3, std::vector<T>(300, 2)), SS_NO_POSITIVE_EIGENVALUE);
  EXPECT_EQ(status(1, std::vector<T>(300, 2)), SS_NOT_CONVERGED);  // 0 over 0

  // Parameters that are not allowed stand for the defaults, and so do all where there are not
  // three.
  const auto mixed = contaminated<T>(3, 300, 0.1, 20);
  const auto by_default = detect<T>(3, mixed, {}, {});
  const T nan = not_a_number<T>;
  for (const Parameters how : {Parameters{3, -1, 0}, {0, 1.5, -1}, {-2, nan, nan}}) {
    EXPECT_EQ(detect<T>(3, mixed, {}, how).weights, by_default.weights);
  }
  for (const int64_t count : {2, 4}) {
    const T none[] = {1, T(1e-9), 1, 1};
    std::vector<T> weights(300);
    Task<T> task(3, 300, SS_COLUMNS, mixed.data());
    task.set(SS_PARAM_OUTLIER_WEIGHTS, weights).set(SS_PARAM_OUTLIER_PARAMS, none);
    task.set(SS_PARAM_OUTLIER_PARAM_COUNT, {count});
    EXPECT_EQ(Entries<T>::outliers(task, 0, SS_METHOD_BACON, orv_threads_serial()), SS_OK);
    EXPECT_EQ(std::vector<double>(weights.begin(), weights.end()), by_default.weights);
  }
}

// What is not finite is an outlier, and all else is as without it.
TYPED_TEST(EachPrecision, OutliersAmongWhatIsNotFinite) {
  using T = TypeParam;
  constexpr int p = 4, n = 400;
  constexpr T infinity = std::numeric_limits<T>::infinity();
  const auto finite = contaminated<T>(p, n, 0.1, 15);
  std::vector<T> all, w, all_w;
  std::vector<size_t> kept;
  for (int i = 0; i < n; ++i) {
    for (const T odd : {not_a_number<T>, infinity, -infinity}) {
      if (i % 37 != static_cast<int>(odd > 0)) continue;
      for (int j = 0; j < p; ++j) all.push_back(j == i % p ? odd : 1);
      all_w.push_back(2);
    }
    kept.push_back(all_w.size());
    all.insert(all.end(), finite.begin() + i * p, finite.begin() + (i + 1) * p);
    w.push_back(T(1 + i % 3)), all_w.push_back(w.back());
  }
  for (int way = 0; way < 8; ++way) {
    Choices choose{way};
    const int64_t layout = choose(2) ? SS_ROWS : SS_COLUMNS;
    const Parameters how = {choose(2) + 1};
    const bool weighted = choose(2);
    const Detected expected = detect<T>(p, finite, weighted ? w : std::vector<T>(), how);
    Detected found = detect<T>(p, all, weighted ? all_w : std::vector<T>(), how, layout);
    ASSERT_EQ(found.status, SS_OK);
    for (int i = 0; i < n; ++i) {
      ASSERT_EQ(found.weights[kept[i]], expected.weights[i]) << i;
      found.weights[kept[i]] = 0;
    }
    EXPECT_EQ(std::ranges::count(found.weights, 0), static_cast<int>(all_w.size()));
  }
  EXPECT_EQ(detect<T>(p, std::vector<T>(n, not_a_number<T>), {}, {}).status, SS_NOT_CONVERGED);
}

TYPED_TEST(EachPrecision, OutliersWithAnyNumberOfThreads) {
  using T = TypeParam;
  for (const int p : {2, 30}) {
    const auto x = contaminated<T>(p, 6000, 0.2, 8);
    for (const Parameters how : {Parameters{1}, {2}, {2, 1e-5}}) {
      const Detected serial = detect<T>(p, x, {}, how);
      EXPECT_EQ(serial.status, SS_OK);
      for (int threads = 1; threads <= 5; ++threads) {
        orv_threads_set_count(threads);
        for (const auto* services : {orv_threads_pool(), orv_threads_reproducible()}) {
          EXPECT_EQ(detect<T>(p, x, {}, how, SS_COLUMNS, services).weights, serial.weights);
        }
      }
    }
  }
  orv_threads_set_count(0);
}

}  // namespace
