// SPDX-License-Identifier: MIT
// Missing values: EM estimates against published ones and a plain EM algorithm, posterior laws of
// long chains against their closed forms, and what is drawn, where and in which order.
#include <orv/zok.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "support.hpp"

using namespace orv_test;

namespace {

template <class T>
T missing() {
  if constexpr (sizeof(T) == sizeof(double)) {
    return orv_missing_d();
  } else {
    return orv_missing_s();
  }
}
template <class T>
constexpr auto missing_values = sizeof(T) == 8 ? _zokdSSMissingValues : _zoksSSMissingValues;

int32_t moments_of(SSTask* task, double* to, int32_t* n) {
  return _zokdSSMissingMoments(task, to, n);
}
int32_t moments_of(SSTask* task, float* to, int32_t* n) {
  return _zoksSSMissingMoments(task, to, n);
}

/// Observation i of variable j at i p + j; NaNs are missing.
struct Table {
  size_t p;
  std::vector<double> x;

  size_t n() const { return x.size() / p; }
  int64_t missing_count() const {
    return std::ranges::count_if(x, [](double v) { return std::isnan(v); });
  }
  template <class T>
  std::vector<T> in(int64_t layout) const {
    std::vector<T> values;
    for (const double v : x) values.push_back(std::isnan(v) ? missing<T>() : static_cast<T>(v));
    return laid_out(layout, p, values);
  }
};

/// Mean and packed covariance.
size_t size_of_estimate(size_t p) { return p * (p + 3) / 2; }

struct Limits {
  int em = 50, da = 30;
  double accuracy = 1e-3;
  int imputations = 1;
};

/// A task for a table, and what it asks for.
template <class T>
class Imputation {
 public:
  Imputation(const Table& table, const Limits& limits, int64_t layout = SS_COLUMNS)
      : data(table.in<T>(layout)),
        untouched(data),
        task(table.p, table.n(), layout, data.data(), true),
        p_(table.p),
        params_{T(limits.em), T(limits.da), T(limits.accuracy), T(limits.imputations),
                T(table.missing_count())},
        limits_(limits) {
    task.set(SS_PARAM_MISSING_PARAM_COUNT, {5}).set(SS_PARAM_MISSING_PARAMS, params_);
  }

  std::vector<T> em() {
    std::vector<T> estimate(size_of_estimate(p_));
    EXPECT_EQ(moments_of(task, estimate.data(), &iterations), SS_OK);
    return estimate;
  }
  void ask_for_values() {
    simulated.resize(static_cast<size_t>(params_[3] * params_[4]));
    task.set(SS_PARAM_SIMULATED_COUNT, {static_cast<int64_t>(simulated.size())});
    task.set(SS_PARAM_SIMULATED_VALUES, simulated);
  }
  void ask_for_estimates() {
    estimates.resize(size_of_estimate(p_) * limits_.da * limits_.imputations);
    task.set(SS_PARAM_ESTIMATES_COUNT, {static_cast<int64_t>(estimates.size())});
    task.set(SS_PARAM_ESTIMATES, estimates);
  }
  int32_t run() {
    const int32_t status =
        missing_values<T>(task, 0, SS_METHOD_MULTIPLE_IMPUTATION, orv_threads_serial());
    EXPECT_EQ(bits(data), bits(untouched));
    return status;
  }

  std::vector<T> data, untouched, simulated, estimates;
  Task<T> task;
  int32_t iterations = 0;

 private:
  size_t p_;
  std::vector<T> params_;
  Limits limits_;
};

// ---- EM -----------------------------------------------------------------------------------------

// Apples: Little and Rubin, Statistical Analysis with Missing Data, example 7.1; cement: the same,
// example 7.8 (Hald's data with values deleted by Rubin).
const double na = NAN;
const Table apples = {2, {8,  59, 6,  58, 11, 56, 22, 53, 14, 50, 17, 45, 18, 43, 24, 42, 19, 39,
                          23, 38, 26, 30, 40, 27, 4,  na, 4,  na, 5,  na, 6,  na, 8,  na, 10, na}},
            cement = {5, {7,  26, 6,  60, 78.5,  1,  29, 15, 52, 74.3, 11, 56, 8,  20, 104.3,
                          11, 31, 8,  47, 87.6,  7,  52, 6,  33, 95.9, 11, 55, 9,  22, 109.2,
                          3,  71, 17, na, 102.7, 1,  31, 22, na, 72.5, 2,  54, 18, na, 93.1,
                          na, na, 4,  na, 115.9, na, na, 23, na, 83.8, na, na, 9,  na, 113.3,
                          na, na, 8,  na, 109.4}};

TYPED_TEST(EachPrecision, EmFindsPublishedEstimates) {
  using T = TypeParam;
  const struct {
    Table table;
    std::vector<double> published;  // all digits that were printed
    double tolerance;
  } cases[] = {{apples, {14.7222, 49.3333, 89.5340, -90.6967, 114.6947}, 1e-3},
               {cement, {6.655, 49.965, 11.769, 27.047, 95.423}, 1e-3}};
  for (const auto& c : cases) {
    for (const double shift : {0., 1e6}) {
      if (shift > 0 && sizeof(T) == sizeof(float)) continue;  // its data keep no digits
      Table moved = c.table;
      for (double& v : moved.x) v += shift;
      for (const int64_t layout : {SS_ROWS, SS_COLUMNS}) {
        Imputation<T> task(moved, {5000, 1, sizeof(T) == sizeof(float) ? 1e-5 : 1e-7}, layout);
        const std::vector<T> found = task.em();
        EXPECT_LT(task.iterations, 2000);
        for (size_t k = 0; k < c.published.size(); ++k) {
          EXPECT_NEAR(found[k] - (k < c.table.p ? shift : 0), c.published[k], c.tolerance) << k;
        }
      }
    }
  }
}

/// Tables of a common factor and noise, about the mean 3.
Table factor_table(size_t p, size_t n, const std::function<bool(size_t, size_t, unsigned)>& gone) {
  std::mt19937 random(4);
  std::normal_distribution<double> normal;
  Table table{p, {}};
  for (size_t i = 0; i < n; ++i) {
    const double factor = normal(random);
    for (size_t j = 0; j < p; ++j) {
      const double x = 3 + factor + static_cast<double>(j + 1) * normal(random);
      table.x.push_back(gone(i, j, static_cast<unsigned>(random()) % 100) ? na : x);
    }
  }
  return table;
}

const std::pair<const char*, Table> tables[] = {
    {"10 %", factor_table(4, 80, [](auto, auto, auto r) { return r < 10; })},
    {"40 %", factor_table(6, 90, [](auto, auto, auto r) { return r < 40; })},
    {"monotone", factor_table(4, 60, [](auto i, auto j, auto) { return j * 12 > i; })},
    {"rows wholly", factor_table(3, 50, [](auto i, auto, auto) { return i % 4 == 1; })},
    {"a variable wholly", factor_table(3, 40, [](auto, auto j, auto r) { return j == 1 || !r; })},
    {"few are there", factor_table(5, 90, [](auto, auto, auto r) { return r < 75; })},
    {"none", factor_table(3, 30, [](auto, auto, auto) { return false; })},
    {"70 variables", factor_table(70, 300, [](auto i, auto j, auto r) {
       return i % 2 != 0 ? j % 65 == 2 : r < 10;
     })}};

using Matrix = std::vector<double>;  // p + 1 by p + 1; row and column 0 hold the means

/// Regression of the missing on the observed by elimination; the log-likelihood of the observed.
struct Plain {
  size_t p;
  Matrix G;

  double& at(size_t i, size_t j) { return G[i * (p + 1) + j]; }

  /// One observation: adds what is expected of its products, returns the log of its density.
  double add(const double* x, Matrix& sums) {
    std::vector<size_t> o, m;
    for (size_t j = 0; j < p; ++j) (std::isnan(x[j]) ? m : o).push_back(j + 1);
    Matrix swept = G;
    const size_t q = p + 1;
    double log_density = 0;
    for (const size_t k : o) {
      const double pivot = swept[k * q + k];
      // What observed variables before this one leave open of it.
      double residual = x[k - 1] - swept[k];
      for (const size_t b : o) {
        if (b >= k) break;
        residual -= swept[k * q + b] * x[b - 1];
      }
      log_density -= 0.5 * (std::log(2 * M_PI * pivot) + residual * residual / pivot);
      Matrix next = swept;
      for (size_t i = 0; i < q; ++i) {
        for (size_t j = 0; j < q; ++j) {
          next[i * q + j] = i == k && j == k ? -1 / pivot
                            : i == k || j == k
                                ? swept[i * q + j] / pivot
                                : swept[i * q + j] - swept[i * q + k] * swept[k * q + j] / pivot;
        }
      }
      swept = next;
    }
    std::vector<double> full(q, 1);
    for (const size_t j : o) full[j] = x[j - 1];
    for (const size_t j : m) {
      full[j] = swept[j];
      for (const size_t b : o) full[j] += swept[j * q + b] * x[b - 1];
    }
    for (size_t i = 0; i < q; ++i) {
      for (size_t j = 0; j < q; ++j) sums[i * q + j] += full[i] * full[j];
    }
    for (const size_t i : m) {
      for (const size_t j : m) sums[i * q + j] += swept[i * q + j];
    }
    return log_density;
  }

  /// An iteration; returns the log-likelihood of the parameters before.
  double iterate(const Table& table) {
    Matrix sums(G.size());
    double log_likelihood = 0;
    for (size_t i = 0; i < table.n(); ++i) log_likelihood += add(&table.x[i * p], sums);
    const auto n = static_cast<double>(table.n());
    for (double& s : sums) s /= n;
    for (size_t i = 1; i <= p; ++i) {
      for (size_t j = 1; j <= p; ++j) at(i, j) = sums[i * (p + 1) + j] - sums[i] * sums[j];
    }
    for (size_t j = 1; j <= p; ++j) at(0, j) = at(j, 0) = sums[j];
    return log_likelihood;
  }
};

TYPED_TEST(EachPrecision, EmIsThePlainAlgorithmAndNeverLowersTheLikelihood) {
  using T = TypeParam;
  for (const auto& [name, original] : tables) {
    SCOPED_TRACE(name);
    Table table = original;
    if (sizeof(T) == sizeof(float)) {
      for (double& v : table.x) v = static_cast<float>(v);
    }
    const size_t p = table.p;
    Plain plain{p, Matrix((p + 1) * (p + 1))};
    for (size_t i = 0; i <= p; ++i) plain.at(i, i) = i == 0 ? -1 : 1;
    double likelihood = -INFINITY;
    for (int iteration = 1; iteration <= (p > 10 ? 2 : 12); ++iteration) {
      const double now = plain.iterate(table);
      EXPECT_GE(now, likelihood - 1e-9 * std::abs(likelihood)) << iteration;
      likelihood = now;
      Imputation<T> task(table, {iteration, 1, 1e-30}, iteration % 2 ? SS_ROWS : SS_COLUMNS);
      const std::vector<T> found = task.em();
      const double tolerance = sizeof(T) == sizeof(float) ? 3e-6 : 1e-9;
      size_t k = 0;
      for (size_t i = 0; i <= p; ++i) {
        for (size_t j = std::max<size_t>(i, 1); j <= p; ++j, ++k) {
          const double scale = std::abs(plain.at(i, j)) + std::sqrt(plain.at(j, j));
          ASSERT_NEAR(found[k], plain.at(i, j), tolerance * scale) << iteration << " " << i << j;
        }
      }
    }
  }
}

// A change is an absolute one, so that a start near the end ends at once, and the default is 0.001.
TEST(MissingValues, EmStopsAsToldAndStartsWhereItIsTold) {
  Imputation<double> first(apples, {2000, 1, 1e-10});
  std::vector<double> end = first.em();
  EXPECT_GT(first.iterations, 50);
  for (const double accuracy : {0., -1.}) {
    Imputation<double> task(apples, {0, 1, accuracy});  // the default limit, too
    task.em();
    EXPECT_GT(task.iterations, 10);
    EXPECT_LT(task.iterations, first.iterations - 10);
  }
  for (const int64_t count : {5, 6}) {  // any other count means: no start
    Imputation<double> task(apples, {2000, 1, 1e-6});
    task.task.set(SS_PARAM_INIT_ESTIMATES, end).set(SS_PARAM_INIT_ESTIMATES_COUNT, {count});
    task.em();
    EXPECT_EQ(task.iterations == 1, count == 5);
  }
}

// A variable that never varies is no pivot, and predicts nothing.
TEST(MissingValues, EmOfAConstantVariable) {
  Table table = factor_table(3, 50, [](auto, auto j, auto r) { return j > 0 && r < 30; });
  for (size_t i = 0; i < table.n(); ++i) table.x[3 * i] = 5;
  Imputation<double> task(table, {500, 1, 1e-9});
  const std::vector<double> found = task.em();
  EXPECT_EQ(found[0], 5);
  for (const double v : found) EXPECT_TRUE(std::isfinite(v));
  EXPECT_NEAR(found[3], 0, 1e-12);
}

// ---- Imputations --------------------------------------------------------------------------------

// Patterns by their first observation, then observations, then variables.
TYPED_TEST(EachPrecision, ValuesAreDrawnInTheOrderToldAndDeliveredInThatOfStorage) {
  using T = TypeParam;
  const Table table = {2, {1, na, 2, 5, na, na, 4, na, na, 7, 6, 3, na, na, 0, 4, na, 9, 3, 6}};
  for (const int64_t layout : {SS_ROWS, SS_COLUMNS}) {
    Imputation<T> task(table, {50, 1, 1e-3, 1}, layout);
    const std::vector<T> g = task.em();
    task.ask_for_values();
    ASSERT_EQ(task.run(), SS_OK);
    const std::vector<T> values = task.simulated;
    ASSERT_EQ(task.run(), SS_OK);
    EXPECT_EQ(task.simulated, values);

    const uint32_t seeds[] = {1, 0x40000};
    StreamState* stream;
    ASSERT_EQ(__zokNewStreamEx(&stream, BRNG_MCG59, 2, seeds), RNG_OK);
    for (const bool same : {true, false}) {  // the stream has moved on
      const auto from = sizeof(T) == 8 ? _zokdSSMissingValuesFrom : _zoksSSMissingValuesFrom;
      ASSERT_EQ(from(task.task, stream), SS_OK);
      EXPECT_EQ(task.simulated == values, same);
    }
    __zokDeleteStream(&stream);

    const double m1 = g[0], m2 = g[1], s11 = g[2], s12 = g[3], s22 = g[4];
    ASSERT_EQ(__zokNewStreamEx(&stream, BRNG_MCG59, 2, seeds), RNG_OK);
    const auto normal = [&] {
      T z;
      if constexpr (sizeof(T) == sizeof(double)) {
        _zokdRngGaussian(2, stream, 1, &z, 0, 1);
      } else {
        _zoksRngGaussian(2, stream, 1, &z, 0, 1);
      }
      return static_cast<double>(z);
    };
    std::vector<double> completed = table.x;
    const auto second_given_first = [&](size_t i) {
      completed[2 * i + 1] =
          m2 + s12 / s11 * (completed[2 * i] - m1) + std::sqrt(s22 - s12 * s12 / s11) * normal();
    };
    for (const size_t i : {0, 3}) second_given_first(i);
    for (const size_t i : {2, 6}) {
      const double first = normal(), second = normal();
      completed[2 * i] = m1 + std::sqrt(s11) * first;
      completed[2 * i + 1] =
          m2 + s12 / std::sqrt(s11) * first + std::sqrt(s22 - s12 * s12 / s11) * second;
    }
    for (const size_t i : {4, 8}) {
      completed[2 * i] = m1 + s12 / s22 * (completed[2 * i + 1] - m2) +
                         std::sqrt(s11 - s12 * s12 / s22) * normal();
    }
    __zokDeleteStream(&stream);
    const std::vector<double> gone = laid_out(layout, 2, table.x);
    const std::vector<double> expected = laid_out(layout, 2, completed);
    size_t k = 0;
    for (size_t i = 0; i < gone.size(); ++i) {
      if (!std::isnan(gone[i])) continue;
      ASSERT_NEAR(values[k++], expected[i], sizeof(T) == sizeof(float) ? 1e-5 : 1e-12) << i;
    }
  }
}

struct Figures {
  double mean, deviation;
};
template <class T, class F>
Figures figures(const std::vector<T>& draws, size_t size, F f) {
  double sum = 0, squares = 0, n = 0;
  for (size_t k = 0; k < draws.size(); k += size, ++n) {
    const double v = f(&draws[k]);
    sum += v, squares += v * v;
  }
  return {sum / n, std::sqrt(squares / n - sum / n * (sum / n))};
}

/// Mean and deviation of 1 / chi^2 of k degrees of freedom, times s.
Figures inverse_chi2(double s, double k) {
  return {s / (k - 2), s / (k - 2) * std::sqrt(2 / (k - 4))};
}

void expect_figures(const Figures& found, const Figures& expected, const char* what) {
  EXPECT_NEAR(found.mean, expected.mean, 0.03 * expected.deviation) << what;
  EXPECT_NEAR(found.deviation, expected.deviation, 0.04 * expected.deviation) << what;
}

// x has been observed n times, y with it c times. Under the density |C|^(-3/2) the law of both
// factors into that of x, and the regression of y on x (Rubin 1974).
TYPED_TEST(EachPrecision, LongChainsHaveTheirPosteriorLaw) {
  using T = TypeParam;
  const double n = 40, c = 30;
  const Table table = factor_table(2, 40, [](auto i, auto j, auto) { return j == 1 && i >= 30; });
  double x_all = 0, sxx_all = 0, x = 0, y = 0, sxx = 0, sxy = 0, syy = 0;
  for (size_t i = 0; i < 40; ++i) {
    x_all += table.x[2 * i] / n;
    if (i < 30) x += table.x[2 * i] / c, y += table.x[2 * i + 1] / c;
  }
  for (size_t i = 0; i < 40; ++i) {
    const double dx = table.x[2 * i] - x, dy = table.x[2 * i + 1] - y;
    sxx_all += (table.x[2 * i] - x_all) * (table.x[2 * i] - x_all);
    if (i < 30) sxx += dx * dx, sxy += dx * dy, syy += dy * dy;
  }
  Imputation<T> task(table, {50, 20000, 1e-3, 2});
  task.ask_for_estimates();  // alone: no values are asked for
  ASSERT_EQ(task.run(), SS_OK);
  const auto of = [&](auto f) { return figures(task.estimates, 5, f); };

  const Figures var_x = inverse_chi2(sxx_all, n - 2),
                rest = inverse_chi2(syy - sxy * sxy / sxx, c - 1);
  const double slope = sxy / sxx;
  expect_figures(of([](const T* d) { return d[0]; }), {x_all, std::sqrt(var_x.mean / n)}, "mean x");
  expect_figures(of([](const T* d) { return d[2]; }), var_x, "variance of x");
  expect_figures(of([](const T* d) { return d[4] - d[3] * d[3] / d[2]; }), rest, "rest of y");
  expect_figures(of([](const T* d) { return d[3] / d[2]; }), {slope, std::sqrt(rest.mean / sxx)},
                 "slope");
  const Figures mean_y = of([](const T* d) { return d[1]; });
  EXPECT_NEAR(mean_y.mean, y + slope * (x_all - x), 0.03 * mean_y.deviation);
}

// Rows wholly missing tell nothing: what is left is the update of complete data by the prior.
TEST(MissingValues, APriorTakesPart) {
  const Table table = factor_table(2, 40, [](auto i, auto, auto) { return i % 4 == 3; });
  const double c = 30, tau = 20, nu = 15;
  const std::vector<double> prior = {10, -5, tau, nu + 0.5, 300, 40, 500};
  double mean[2] = {}, scatter[3] = {};
  for (size_t i = 0; i < 40; ++i) {
    for (size_t j = 0; i % 4 != 3 && j < 2; ++j) mean[j] += table.x[2 * i + j] / c;
  }
  for (size_t i = 0; i < 40; ++i) {
    if (i % 4 == 3) continue;
    const double d0 = table.x[2 * i] - mean[0], d1 = table.x[2 * i + 1] - mean[1];
    scatter[0] += d0 * d0, scatter[1] += d0 * d1, scatter[2] += d1 * d1;
  }
  const double off[2] = {mean[0] - prior[0], mean[1] - prior[1]}, f = c * tau / (c + tau);
  const double lambda[3] = {scatter[0] + prior[4] + f * off[0] * off[0],
                            scatter[1] + prior[5] + f * off[0] * off[1],
                            scatter[2] + prior[6] + f * off[1] * off[1]};
  for (const int64_t count : {7, 6}) {  // with less it is none
    Imputation<double> task(table, {50, 40000});
    task.task.set(SS_PARAM_PRIOR, prior).set(SS_PARAM_PRIOR_COUNT, {count});
    task.ask_for_estimates();
    ASSERT_EQ(task.run(), SS_OK);
    const auto mean_of = [&](size_t k) {
      return figures(task.estimates, 5, [k](const double* d) { return d[k]; });
    };
    const bool used = count == 7;
    for (size_t j = 0; j < 2; ++j) {
      const double expected = used ? (c * mean[j] + tau * prior[j]) / (c + tau) : mean[j];
      EXPECT_NEAR(mean_of(j).mean, expected, 0.03 * mean_of(j).deviation) << used;
    }
    for (size_t k = 0; k < 3; ++k) {
      const double expected = used ? lambda[k] / (c + nu - 3) : scatter[k] / (c - 1 - 3);
      EXPECT_NEAR(mean_of(2 + k).mean, expected, 0.04 * mean_of(2 + k).deviation) << used << k;
    }
  }
}

// Values and parameters of all kinds of tables are finite, and observed means of many variables
// come out again.
TEST(MissingValues, TablesOfAllKindsAreImputed) {
  for (const auto& [name, table] : tables) {
    SCOPED_TRACE(name);
    if (table.missing_count() == 0) continue;
    Imputation<double> task(table, {20, 3, 1e-3, 2});
    task.ask_for_values();
    task.ask_for_estimates();
    ASSERT_EQ(task.run(), SS_OK);
    for (const auto* results : {&task.simulated, &task.estimates}) {
      for (const double v : *results) ASSERT_TRUE(std::isfinite(v));
    }
    if (table.p < 64) continue;
    double worst = 0;
    for (size_t j = 0; j < table.p; ++j) {
      const double deviation = std::sqrt(1 + static_cast<double>((j + 1) * (j + 1)));
      worst = std::max(worst, std::abs(task.estimates[j] - 3) / deviation * std::sqrt(300.));
    }
    EXPECT_LT(worst, 6);
  }
}

}  // namespace
