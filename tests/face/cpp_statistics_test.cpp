// SPDX-License-Identifier: MIT
// Data sets and accumulators of the C++ face against plain sums in extended precision.
#include <gtest/gtest.h>
#include <unistd.h>
#include <orv/dataset.hpp>
#include <orv/distributions.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

#include "cpp_support.hpp"

namespace {

using orv_test::refusal;

using L = long double;
const double none = std::numeric_limits<double>::quiet_NaN();

/// n observations of p variables that depend on each other, skew, far from 0.
template <class T>
struct Data {
  size_t n, p;
  std::vector<T> x, rows, w;  // by observation, by variable

  Data(size_t observations, size_t variables, double far = 100) : n(observations), p(variables) {
    orv::stream s(orv::mt19937, 99);
    x.resize(n * p), rows.resize(n * p), w.resize(n);
    orv::sample(s, orv::exponential{.scale = 2, .shift = far}, x);
    orv::sample(s, orv::uniform{0, 3}, w);
    for (size_t i = 0; i < n; ++i) {
      if (i % 7 == 0) w[i] = 0;
      for (size_t j = 0; j < p; ++j) {
        if (j > 0) x[i * p + j] += x[i * p + j - 1] / 2;
        rows[j * n + i] = x[i * p + j];
      }
    }
  }
  orv::table<T> by_observation() const { return {x.data(), n, p}; }
  orv::table<T> by_variable() const { return {rows.data(), n, p, orv::layout::by_variable}; }
};

/// Of the observations from `first` to `last`, weighted or not.
struct Truth {
  std::vector<L> mean, second, third, fourth;  // central moments
  std::vector<std::vector<L>> covariance;

  template <class T>
  Truth(const Data<T>& d, bool weighted, size_t first, size_t last)
      : mean(d.p), second(d.p), third(d.p), fourth(d.p), covariance(d.p, std::vector<L>(d.p)) {
    L sum = 0, squares = 0;
    const auto each = [&](auto f) {
      for (size_t i = first; i < last; ++i) f(&d.x[i * d.p], weighted ? L(d.w[i]) : L(1));
    };
    each([&](const T* x, L w) {
      sum += w, squares += w * w;
      for (size_t j = 0; j < d.p; ++j) mean[j] += w * x[j];
    });
    for (L& m : mean) m /= sum;
    each([&](const T* x, L w) {
      for (size_t j = 0; j < d.p; ++j) {
        const L v = x[j] - mean[j];
        second[j] += w * v * v / sum, third[j] += w * v * v * v / sum;
        fourth[j] += w * v * v * v * v / sum;
        for (size_t k = 0; k < d.p; ++k) {
          covariance[j][k] += w * v * (x[k] - mean[k]) / (sum - squares / sum);
        }
      }
    });
  }
};

template <class A, class B>
void expect_near(const A& found, const B& expected, double relative, const char* what) {
  ASSERT_EQ(found.size(), expected.size()) << what;
  for (size_t j = 0; j < found.size(); ++j) {
    EXPECT_NEAR(found[j], expected[j], relative * std::fabs(static_cast<double>(expected[j])))
        << what << " " << j;
  }
}

void expect_moments(const orv::accumulator& a, const Truth& truth, double relative) {
  std::vector<L> variance, skewness, kurtosis;
  for (size_t j = 0; j < truth.mean.size(); ++j) {
    const L c = truth.covariance[j][j];
    variance.push_back(c);
    skewness.push_back(truth.third[j] / c / std::sqrt(c));
    kurtosis.push_back(truth.fourth[j] / c / c - 3);
  }
  expect_near(a.mean(), truth.mean, relative, "mean");
  expect_near(a.variance(), variance, relative, "variance");
  expect_near(a.central_moment(2), truth.second, relative, "second moment");
  expect_near(a.central_moment(3), truth.third, 20 * relative, "third moment");
  expect_near(a.central_moment(4), truth.fourth, 20 * relative, "fourth moment");
  expect_near(a.skewness(), skewness, 20 * relative, "skewness");
  expect_near(a.kurtosis(), kurtosis, 20 * relative, "kurtosis");
}

template <class T>
class CppDataset : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(CppDataset, Precisions);

TYPED_TEST(CppDataset, AgreesWithPlainSumsInEveryForm) {
  using T = TypeParam;
  const Data<T> d(3001, 4);
  const double relative = sizeof(T) == 8 ? 1e-12 : 2e-3;
  const std::vector<int> some{1, 0, 1, 1};
  for (const bool weighted : {false, true}) {
    const Truth truth(d, weighted, 0, d.n);
    for (const bool masked : {false, true}) {
      for (const auto& table : {d.by_observation(), d.by_variable()}) {
        orv::dataset data(table);
        if (weighted) data.weights(d.w);
        if (masked) data.mask(some);
        const auto& v = data.variables();
        ASSERT_EQ(v, masked ? (std::vector<size_t>{0, 2, 3}) : (std::vector<size_t>{0, 1, 2, 3}));
        const auto m = data.mean();
        const auto cov = data.covariance(), cor = data.correlation();
        const auto fast = data.covariance(orv::covariance_method::matrix_routines);
        const auto moments = data.moments();
        ASSERT_EQ(cov.rows(), v.size());
        for (size_t i = 0; i < v.size(); ++i) {
          EXPECT_NEAR(m[i], truth.mean[v[i]], relative * 100);
          EXPECT_NEAR(moments.kurtosis()[i],
                      truth.fourth[v[i]] / std::pow(truth.covariance[v[i]][v[i]], 2) - 3, 1e-6);
          for (size_t j = 0; j < v.size(); ++j) {
            const L c = truth.covariance[v[i]][v[j]],
                    r = c / std::sqrt(truth.covariance[v[i]][v[i]] * truth.covariance[v[j]][v[j]]);
            EXPECT_NEAR(cov(i, j), c, relative * 100);
            EXPECT_NEAR(fast(i, j), c, sizeof(T) == 8 ? 1e-9 : 0.5);  // loses digits
            EXPECT_NEAR(cor(i, j), r, relative * 10);
          }
          std::vector<T> sorted(&d.rows[v[i] * d.n], &d.rows[v[i] * d.n] + d.n);
          std::sort(sorted.begin(), sorted.end());
          EXPECT_EQ(data.minimum()[i], sorted.front());
          EXPECT_EQ(data.maximum()[i], sorted.back());
          const auto q = data.quantiles({0.5, 0, 1});
          if (weighted) {  // half of the weight on either side
            T below = 0, all = 0;
            for (size_t k = 0; k < d.n; ++k) {
              all += d.w[k];
              if (d.rows[v[i] * d.n + k] <= q(i, 0)) below += d.w[k];
            }
            EXPECT_NEAR(below / all, 0.5, 2e-3);
          } else {
            EXPECT_EQ(data.median()[i], sorted[1500]);
            EXPECT_EQ(q(i, 0), sorted[1500]);
            EXPECT_EQ(q(i, 1), sorted.front());
            EXPECT_EQ(q(i, 2), sorted.back());
          }
        }
      }
    }
  }
}

TEST(CppData, GroupsHaveEstimatesOfTheirOwn) {
  const Data<double> d(900, 3);
  std::vector<int64_t> group(d.n);
  for (size_t i = 0; i < d.n; ++i) group[i] = i < 300 ? 2 : i < 500 ? 0 : 1;
  const size_t bounds[][2] = {{300, 500}, {500, 900}, {0, 300}};
  const auto r = orv::dataset(d.by_variable()).mask(std::array{1, 0, 1}).groups(group);
  ASSERT_EQ(r.means.rows(), 3u);
  L pooled = 0;
  for (size_t g = 0; g < 3; ++g) {
    const Truth truth(d, false, bounds[g][0], bounds[g][1]);
    EXPECT_NEAR(r.means(g, 1), truth.mean[2], 1e-11);
    EXPECT_NEAR(r.covariances[g](0, 1), truth.covariance[0][2], 1e-11);
    pooled += truth.covariance[0][2] * (bounds[g][1] - bounds[g][0] - 1);
  }
  EXPECT_NEAR(r.pooled_covariance(0, 1), pooled / 897, 1e-11);
  EXPECT_NEAR(r.pooled_mean[1], Truth(d, false, 0, 900).mean[2], 1e-11);
}

/// A cloud with a tenth of its observations far away, and one that is not finite.
TYPED_TEST(CppDataset, RobustEstimatesLeaveOutliersOut) {
  using T = TypeParam;
  constexpr size_t n = 1000, p = 3;
  orv::stream s(orv::mt19937, 5);
  std::vector<T> x(n * p);
  const std::vector<T> mean{1, 2000, -3}, factor{2, 0, 0, 100, 100, 0, 0, 0, T(0.01)};
  orv::sample(s, orv::multivariate_normal<T>{mean, factor}, x);
  std::vector<size_t> far;
  for (size_t i = 7; i < n; i += 10) {
    for (size_t j = 0; j < p; ++j) x[i * p + j] = mean[j] + 20 * factor[j * p + j];
    far.push_back(i);
  }
  const orv::dataset data(orv::table(x, p));
  const auto r = data.robust_covariance();
  EXPECT_NEAR(r.mean[0], 1, 0.3);
  EXPECT_NEAR(r.mean[1], 2000, 20);
  EXPECT_NEAR(r.covariance(1, 1), 2e4, 8e3);
  EXPECT_NEAR(r.covariance(0, 1), 200, 80);
  EXPECT_NEAR(r.covariance(2, 2), 1e-4, 4e-5);  // the tenth widens what is left
  EXPECT_GT(std::fabs(data.mean()[1] - 2000), 100);
  orv::dataset masked(orv::table(x, p));
  masked.mask(std::array{0, 1, 1});
  EXPECT_EQ(masked.robust_covariance({.iterations = 0}).mean.size(), 2u);

  const auto clean_ones = [&](const std::vector<size_t>& found) {
    EXPECT_TRUE(std::includes(found.begin(), found.end(), far.begin(), far.end()));
    return found.size() - far.size();
  };
  EXPECT_LT(clean_ones(data.outliers()), n / 5);
  EXPECT_LT(clean_ones(masked.outliers({.alpha = 0.05 / n})), 5u);
  x[12 * p] = std::numeric_limits<T>::infinity();
  const auto found = data.outliers();
  EXPECT_TRUE(std::binary_search(found.begin(), found.end(), 12u));
  EXPECT_EQ(refusal([&] { data.robust_covariance(); }),
            "orv::dataset::robust_covariance: variable 0 is inf at observation 12");
  EXPECT_EQ(refusal([&] { data.outliers({.alpha = 2}); }),
            "orv::dataset::outliers: alpha is 2; it has to be above 0 and below 1");
  const std::vector<T> same(40, 1), w(20, 1);
  orv::dataset constant(orv::table(same, 2));
  EXPECT_EQ(refusal([&] { constant.robust_covariance(); }),
            "orv::dataset::robust_covariance: variable 0 does not vary");
  EXPECT_EQ(refusal([&] { constant.weights(w).outliers(); }),
            "orv::dataset::outliers: weights have no part in it");
  EXPECT_EQ(refusal([&] { orv::dataset(orv::table(x.data(), 6, 3)).robust_covariance(); }),
            "orv::robust_covariance: there are too few observations for so many variables");
}

/// Missing values of a variable that is nearly three times another one.
TYPED_TEST(CppDataset, ImputedValuesFollowTheOthers) {
  using T = TypeParam;
  constexpr size_t n = 400;
  orv::stream s(orv::mt19937, 5);
  std::vector<T> x(n * 3);
  const std::vector<T> mean{1000, -2, 5}, factor{3, 0, 0, 9, T(0.1), 0, 1, 1, 1};
  orv::sample(s, orv::multivariate_normal<T>{mean, factor}, x);
  const std::vector<T> whole = x;
  for (size_t i = 3; i < n; i += 4) x[3 * i + 1] = std::numeric_limits<T>::quiet_NaN();
  orv::dataset data(orv::table(x, 3));
  orv::stream random = s, again = s;
  const auto completed = data.impute(random, {.imputations = 3});
  ASSERT_EQ(completed.size(), 3u);
  double squares = 0;
  for (const auto& table : completed) {
    for (size_t i = 0; i < n; ++i) {
      EXPECT_EQ(table(i, 0), whole[3 * i]);
      const double d = table(i, 1) - whole[3 * i + 1];
      EXPECT_TRUE(d == 0 || i % 4 == 3);
      squares += d * d;
    }
  }
  EXPECT_NEAR(std::sqrt(squares / (3 * n / 4)), 0.1, 0.015);  // both others tell of it
  EXPECT_NE(completed[0].elements(), completed[1].elements());
  EXPECT_EQ(data.impute(again, {.imputations = 3})[2].elements(), completed[2].elements());

  EXPECT_EQ(orv::dataset(orv::table(whole, 3)).impute(s)[4].elements(), whole);
  const std::array only{0, 1, 1};
  EXPECT_EQ(data.mask(only).impute(s, {.imputations = 1})[0].columns(), 2u);
  for (size_t i = 0; i < n; ++i) x[3 * i + 2] = std::numeric_limits<T>::quiet_NaN();
  EXPECT_EQ(refusal([&] { data.impute(s); }), "orv::dataset::impute: variable 2 has no value");
  EXPECT_EQ(refusal([&] { data.impute(s, {.imputations = 0}); }),
            "orv::dataset::impute: 0 imputations; 1 or more");
}

/// As std::mdspan has it.
struct View {
  const float* x;
  size_t extents[2], strides[2];
  const float* data_handle() const { return x; }
  size_t extent(size_t r) const { return extents[r]; }
  size_t stride(size_t r) const { return strides[r]; }
};

TEST(CppData, TakesViewsOfEitherOrder) {
  const Data<float> d(50, 3);
  const orv::dataset down(View{d.x.data(), {50, 3}, {3, 1}});
  const orv::dataset across(View{d.rows.data(), {50, 3}, {1, 50}});
  EXPECT_EQ(down.mean(), across.mean());
  EXPECT_EQ(refusal([&] {
              orv::dataset(View{d.x.data(), {25, 3}, {6, 1}});
            }),
            "orv::table: strides of 6 and 1; the data have to lie densely");
}

TEST(CppData, RefusesWhatIsNoData) {
  const std::vector<double> x{1, 2, 3, 4, 5, 6};
  orv::dataset d(orv::table(x, 2));
  const struct {
    const char* text;
    std::function<void()> call;
  } rows[] = {
      {"orv::table: 6 elements are no observations of 4 variables", [&] { orv::table(x, 4); }},
      {"orv::table: 6 elements are no observations of 0 variables", [&] { orv::table(x, 0); }},
      {"orv::dataset::dataset: no observations", [&] { orv::dataset(orv::table(x.data(), 0, 2)); }},
      {"orv::dataset::weights: the weights has 2 elements; it needs 3",
       [&] {
         d.weights(std::vector<double>{1, 1});
       }},
      {"orv::dataset::weights: weight -1 at 1; weights are finite and not below 0",
       [&] {
         d.weights(std::vector<double>{1, -1, 1});
       }},
      {"orv::dataset::weights: all weights are 0", [&] { d.weights(std::vector<double>(3)); }},
      {"orv::dataset::mask: no variable is left",
       [&] {
         d.mask(std::vector<int>{0, 0});
       }},
      {"orv::dataset::mask: the mask has 3 elements; it needs 2",
       [&] {
         d.mask(std::vector<int>{0, 0, 1});
       }},
      {"orv::dataset::quantiles: order 1.5; orders lie from 0 to 1",
       [&] {
         d.quantiles({0.5, 1.5});
       }},
      {"orv::dataset::groups: group 3; groups are counted from 0 without a gap",
       [&] {
         d.groups(std::vector<int64_t>{0, 3, 0});
       }},
      {"orv::dataset::groups: group 1 has no observation",
       [&] {
         d.groups(std::vector<int64_t>{0, 2, 0});
       }},
  };
  for (const auto& row : rows) EXPECT_EQ(refusal(row.call), row.text);
}

// ---- Accumulators -------------------------------------------------------------------------------

/// Blocks of one observation and of many, taken by two accumulators, weigh as all at once.
TEST(CppAccumulator, JoinsBlocksAndOtherAccumulators) {
  for (const double far : {0.0, 1e6}) {
    const Data<double> d(70001, 2, far);
    for (const bool weighted : {false, true}) {
      const Truth truth(d, weighted, 0, d.n);
      const std::span<const double> w = weighted ? std::span(d.w) : std::span<const double>();
      const auto take = [&](orv::accumulator& a, size_t first, size_t last) {
        a.add(orv::table(&d.x[first * d.p], last - first, d.p),
              weighted ? w.subspan(first, last - first) : w);
      };
      orv::accumulator one(d.p), other(d.p), whole(d.p), empty(d.p);
      take(one, 0, 1), take(one, 1, 2), take(one, 2, 2), take(one, 2, 40), take(one, 40, 9000);
      take(other, 9000, 69999), take(other, 69999, 70001);
      other.merge(empty);
      one.merge(other);
      whole.add(d.by_variable(), w);
      const double relative = far == 0 ? 1e-12 : 1e-9;
      for (const orv::accumulator* a : {&one, &whole}) {
        expect_moments(*a, truth, relative);
        EXPECT_EQ(a->count(), d.n);
        EXPECT_NEAR(a->covariance()(0, 1), truth.covariance[0][1], relative * 10);
        EXPECT_NEAR(a->covariance()(1, 0), truth.covariance[0][1], relative * 10);
        EXPECT_NEAR(
            a->correlation()(1, 0),
            truth.covariance[0][1] / std::sqrt(truth.covariance[0][0] * truth.covariance[1][1]),
            relative * 10);
        EXPECT_EQ(a->minimum(), orv::dataset(d.by_observation()).minimum());
        EXPECT_EQ(a->maximum(), orv::dataset(d.by_observation()).maximum());
      }
    }
  }
}

TEST(CppAccumulator, TakesFloatsAsDoublesAndAnyThreads) {
  const Data<float> d(5000, 3);
  orv::accumulator pool(3), serial(3);
  pool.add(d.by_observation());
  serial.add(d.by_variable(), {}, orv_threads_serial());
  const Truth truth(d, false, 0, d.n);
  expect_moments(pool, truth, 1e-12);
  expect_moments(serial, truth, 1e-12);
}

TEST(CppAccumulator, FewObservationsHaveNoVariance) {
  orv::accumulator a(1);
  EXPECT_TRUE(std::isnan(a.mean()[0]) && std::isnan(a.variance()[0]));
  EXPECT_EQ(a.minimum()[0], HUGE_VAL);
  const double x = 5, zero = 0;
  a.add(orv::table(&x, 1, 1), std::span(&zero, 1));
  EXPECT_EQ(a.count(), 1u);
  EXPECT_TRUE(std::isnan(a.mean()[0]));
  a.add(orv::table(&x, 1, 1));
  EXPECT_EQ(a.mean()[0], 5);
  EXPECT_TRUE(std::isnan(a.variance()[0]) && std::isnan(a.covariance()(0, 0)));
  a.add(orv::table(&x, 1, 1));
  EXPECT_EQ(a.variance()[0], 0);
  EXPECT_TRUE(std::isnan(a.correlation()(0, 0)) && std::isnan(a.skewness()[0]));
  a.add(orv::table(&none, 1, 1));
  EXPECT_TRUE(std::isnan(a.mean()[0]));
  EXPECT_EQ(a.maximum()[0], 5);
}

TEST(CppAccumulator, IsWrittenAndReadAndDamageIsSeen) {
  const Data<double> d(200, 3);
  const std::string path = testing::TempDir() + "cpp_accumulator_" + std::to_string(getpid());
  for (uint32_t moments = 1; moments <= 4; ++moments) {
    for (const bool covariance : {false, true}) {
      orv::accumulator a(3, {.moments = moments, .covariance = covariance});
      a.add(d.by_observation(), d.w);
      a.save(path);
      orv::accumulator b = orv::accumulator::load(path);
      EXPECT_EQ(b.bytes(), a.bytes());
      a.add(d.by_observation()), b.add(d.by_observation());
      EXPECT_EQ(b.bytes(), a.bytes());
    }
  }
  orv::accumulator a(2);
  a.add(orv::table(d.x, 2));
  const std::vector<std::byte> good = a.bytes();
  const char* const text = "orv::accumulator: these bytes are no accumulator";
  for (size_t i = 0; i < good.size(); ++i) {
    std::vector<std::byte> bad = good;
    bad[i] ^= std::byte{0x10};
    EXPECT_EQ(refusal([&] { orv::accumulator::from_bytes(bad); }), text) << i;
    EXPECT_EQ(refusal([&] { orv::accumulator::from_bytes(std::span(good).first(i)); }), text) << i;
  }
  unlink(path.c_str());
  EXPECT_EQ(refusal([&] { orv::accumulator::load(path); }),
            "orv::accumulator: '" + path + "': the file can't be opened");
}

TEST(CppAccumulator, RefusesOtherKinds) {
  orv::accumulator a(2, {.moments = 2, .covariance = false});
  const std::vector<double> x(6), w(2);
  EXPECT_EQ(refusal([&] { a.merge(orv::accumulator(3)); }),
            "orv::accumulator: the other has other variables, moments or no covariance");
  EXPECT_EQ(refusal([&] { a.add(orv::table(x, 3)); }),
            "orv::accumulator: a block of 3 variables; it needs 2");
  EXPECT_EQ(refusal([&] { a.add(orv::table(x, 2), w); }),
            "orv::accumulator: 2 weights for 3 observations");
  EXPECT_EQ(refusal([&] { a.skewness(); }),
            "orv::accumulator: this accumulator keeps moments up to number 2 only");
  EXPECT_EQ(refusal([&] { a.covariance(); }),
            "orv::accumulator: this accumulator keeps no covariance");
  EXPECT_EQ(refusal([] { orv::accumulator(2, {.moments = 5}); }),
            "orv::accumulator: moments up to number 5; allowed is 1 to 4");
  EXPECT_EQ(a.count(), 0u);
}

}  // namespace
