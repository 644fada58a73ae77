// SPDX-License-Identifier: MIT
// Robust covariance: against its definition in extended precision, against what R's robustbase
// gives, and as estimators behave: equivariance, outliers, data that are degenerate.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <numeric>
#include <sstream>
#include <string>

#include "orv/scalar.h"
#include "support.hpp"

using namespace orv_test;

namespace {

using Real = long double;
using Reals = std::vector<Real>;

// ---- The definition -----------------------------------------------------------------------------

/// Observations of p variables, one after another.
struct Observations {
  size_t p;
  Reals x;
  size_t n() const { return x.size() / p; }
  Real at(size_t i, size_t j) const { return x[i * p + j]; }
  Reals variable(size_t j) const {
    Reals y;
    for (size_t i = 0; i < n(); ++i) y.push_back(at(i, j));
    return y;
  }
};

struct Estimate {
  Reals mean, cov;
};

Real median(Reals y) {
  std::ranges::sort(y);
  return (y[(y.size() - 1) / 2] + y[y.size() / 2]) / 2;
}

struct LocationScale {
  Real mu, sigma;
};

LocationScale robust_scale(const Reals& y) {
  const Real m = median(y);
  Reals deviations;
  for (const Real v : y) deviations.push_back(std::fabs(v - m));
  const Real s = median(deviations), inverse = s > 0 ? 1 / s : 0;
  Real top = 0, bottom = 0, sum = 0;
  for (const Real v : y) {
    const Real u = inverse * (v - m) / 4.5L, weight = std::fabs(u) > 1 ? 0 : std::pow(1 - u * u, 2);
    top += weight * v, bottom += weight;
  }
  const Real mu = top / bottom;
  for (const Real v : y) {
    const Real t = inverse * (v - mu);
    sum += std::fabs(t / 3) > 1 ? 9 : t * t;
  }
  return {mu, std::sqrt(sum / static_cast<Real>(y.size())) * s};
}

/// Eigenvectors of a symmetric matrix as columns, by Jacobi's rotations.
Reals eigenvectors(Reals a, size_t p) {
  Reals e(p * p);
  for (size_t j = 0; j < p; ++j) e[j * (p + 1)] = 1;
  for (int sweep = 0; sweep < 30; ++sweep) {
    for (size_t j = 0; j < p; ++j) {
      for (size_t k = j + 1; k < p; ++k) {
        if (a[j * p + k] == 0) continue;
        const Real theta = std::atan2(2 * a[j * p + k], a[k * p + k] - a[j * p + j]) / 2;
        const Real c = std::cos(theta), s = std::sin(theta);
        const auto rotate = [&](Real& x, Real& y) {
          const Real old = x;
          x = c * old - s * y, y = s * old + c * y;
        };
        for (size_t i = 0; i < p; ++i) rotate(a[i * p + j], a[i * p + k]);
        for (size_t i = 0; i < p; ++i) rotate(a[j * p + i], a[k * p + i]);
        for (size_t i = 0; i < p; ++i) rotate(e[i * p + j], e[i * p + k]);
      }
    }
  }
  return e;
}

Reals inverse_of(Reals a, size_t p) {
  Reals b(p * p);
  for (size_t j = 0; j < p; ++j) b[j * (p + 1)] = 1;
  for (size_t j = 0; j < p; ++j) {
    const Real pivot = a[j * (p + 1)];
    for (size_t k = 0; k < p; ++k) a[j * p + k] /= pivot, b[j * p + k] /= pivot;
    for (size_t i = 0; i < p; ++i) {
      const Real factor = a[i * p + j];
      for (size_t k = 0; i != j && k < p; ++k) {
        a[i * p + k] -= factor * a[j * p + k], b[i * p + k] -= factor * b[j * p + k];
      }
    }
  }
  return b;
}

/// Weighted mean, and scatter over `divisor`.
Estimate weighted(const Observations& o, const Reals& w, Real divisor) {
  const size_t p = o.p;
  Estimate e{Reals(p), Reals(p * p)};
  const Real W = std::reduce(w.begin(), w.end());
  for (size_t i = 0; i < o.n(); ++i) {
    for (size_t j = 0; j < p; ++j) e.mean[j] += w[i] / W * o.at(i, j);
  }
  for (size_t i = 0; i < o.n(); ++i) {
    for (size_t j = 0; j < p * p; ++j) {
      e.cov[j] +=
          w[i] * (o.at(i, j / p) - e.mean[j / p]) * (o.at(i, j % p) - e.mean[j % p]) / divisor;
    }
  }
  return e;
}

Estimate start(const Observations& o) {
  const size_t p = o.p, n = o.n();
  Observations z = o;
  Reals U(p * p), d(n), w;
  for (size_t j = 0; j < p; ++j) {
    const Real sigma = robust_scale(o.variable(j)).sigma;
    for (size_t i = 0; i < n; ++i) z.x[i * p + j] = sigma > 0 ? o.at(i, j) / sigma : 0;
  }
  for (size_t j = 0; j < p; ++j) {
    for (size_t k = 0; k < p; ++k) {
      Reals sum = z.variable(j), difference = sum;
      for (size_t i = 0; i < n; ++i) sum[i] += z.at(i, k), difference[i] -= z.at(i, k);
      U[j * p + k] = j == k ? 1
                            : (std::pow(robust_scale(sum).sigma, 2) -
                               std::pow(robust_scale(difference).sigma, 2)) /
                                  4;
    }
  }
  const Reals E = eigenvectors(U, p);
  for (size_t l = 0; l < p; ++l) {
    Reals y(n);
    for (size_t k = 0; k < n * p; ++k) y[k / p] += z.x[k] * E[k % p * p + l];
    const LocationScale s = robust_scale(y);
    for (size_t i = 0; i < n && s.sigma > 1e-12L; ++i) d[i] += std::pow((y[i] - s.mu) / s.sigma, 2);
  }
  const double k = static_cast<double>(p);
  const Real limit = __zokdChi2ICDF(k, 0.9) * median(d) / __zokdChi2ICDF(k, 0.5);
  for (const Real v : d) w.push_back(v < limit ? 1 : 0);
  return weighted(o, w, std::reduce(w.begin(), w.end()));
}

struct Biweight {
  double M, c;
};

/// By moments of the chi-square distribution, and rho in powers of d.
Biweight biweight(size_t dimension, double b, double a) {
  const double p = static_cast<double>(dimension), q = std::sqrt(__zokdChi2ICDF(p, 1 - a));
  const auto F = [&](int j, double x) { return __zokdChi2CDF(p + j, x * x); };
  const auto K = [&](int j) {
    return std::exp(j / 2.0 * std::log(2.0) + std::lgamma((p + j) / 2) - std::lgamma(p / 2));
  };
  double r = 2 * p;
  for (int i = 0; i < 100; ++i) {
    const double A = r * (1 - F(0, r) - b), g = r * A + K(2) * F(2, r);
    if (std::fabs(g) <= 0.0001) break;
    const double slope = 2 * A + 2 * r * K(2) * __zokdChi2PDF(p + 2, r * r) -
                         2 * std::pow(r, 3) * __zokdChi2PDF(p, r * r);
    const double next = r - g / slope;
    r = slope == 0 || next < 0 ? r / 2 : next;
  }
  if (a >= 1 - F(0, r)) return {q, 0};
  const auto mean_rho = [&](Real M, Real c) {
    const Real M2 = M * M, c2 = c * c, c4 = c2 * c2;
    const Real factors[] = {M2 / 2 - M2 * (M2 * M2 - 5 * M2 * c2 + 15 * c4) / (30 * c4),
                            0,
                            0.5L + M2 * M2 / (2 * c4) - M2 / c2,
                            4 * M / (3 * c2) - 4 * M * M2 / (3 * c4),
                            3 * M2 / (2 * c4) - 1 / (2 * c2),
                            -4 * M / (5 * c4),
                            1 / (6 * c4)};
    const double m = static_cast<double>(M), end = static_cast<double>(M + c);
    Real sum = K(2) * F(2, m) / 2 + (M2 / 2 + c * (5 * c + 16 * M) / 30) * (1 - F(0, end));
    for (int j = 0; j <= 6; ++j) sum += factors[j] * K(j) * (F(j, end) - F(j, m));
    return sum;
  };
  Real M = std::sqrt(p);
  for (int i = 0; i < 100; ++i) {
    const Real c = q - M, h = 0.0001L, E = mean_rho(M, c);
    const Real f = E - b * ((0.5L * M + 8 / 15.0L * c) * M + c * c / 6);
    const Real dM = (mean_rho(M + h, c) - E) / h, dc = (mean_rho(M, c + h) - E) / h;
    Real next = M - f / (dM - (7 / 15.0L * M + 0.2L * c) * b - dc);
    if (next >= q || next <= 0) next = (M + q) / 2;
    M = next;
    if (std::fabs(f) <= 0.0001L) return {static_cast<double>(M), static_cast<double>(q - M)};
  }
  return {q, 0};
}

Estimate iterate(const Observations& o, Estimate e, const Biweight& t, double accuracy, int most) {
  const size_t p = o.p, n = o.n(), H = (n + p + 1) / 2;
  const double k = static_cast<double>(p),
               part = static_cast<double>(H) / static_cast<double>(n + 1);
  Real change = 1 + accuracy;
  for (int i = 0; i < most && change > accuracy; ++i) {
    const Reals inverse = inverse_of(e.cov, p), old = e.mean;
    Reals d(n), w(n), sorted;
    for (size_t r = 0; r < n; ++r) {
      for (size_t j = 0; j < p * p; ++j) {
        d[r] += inverse[j] * (o.at(r, j / p) - old[j / p]) * (o.at(r, j % p) - old[j % p]);
      }
      d[r] = std::sqrt(d[r]);
    }
    sorted = d;
    std::ranges::sort(sorted);
    Real A = 0;
    for (size_t r = 0; r < n; ++r) {
      const Real v = d[r] * std::sqrt(__zokdChi2ICDF(k, part)) / sorted[H - 1];
      w[r] = v < t.M                     ? 1
             : t.c > 0 && v <= t.M + t.c ? std::pow(1 - std::pow((v - t.M) / t.c, 2), 2)
                                         : 0;
      A += w[r] * v * v;
    }
    e = weighted(o, w, A / k);
    change = 0;
    for (size_t j = 0; j < p; ++j) change += std::pow(e.mean[j] - old[j], 2);
  }
  return e;
}

// ---- The library --------------------------------------------------------------------------------

template <class T>
struct Robust {
  int32_t status;
  std::vector<T> mean, cov;  // the latter as it is stored
};

/// Of data with observations one after another.
template <class T>
Robust<T> robust(size_t p, const std::vector<T>& x, const std::vector<T>& parameters = {},
                 int64_t layout = SS_COLUMNS, int64_t storage = SS_MATRIX_FULL,
                 const SSThreadServices* services = orv_threads_serial(), bool wide = false) {
  Robust<T> r{0, std::vector<T>(p),
              std::vector<T>(storage == SS_MATRIX_FULL ? p * p : p * (p + 1) / 2)};
  const std::vector<T> data = laid_out(layout, p, x);
  Task<T> task(static_cast<int64_t>(p), static_cast<int64_t>(x.size() / p), layout, data.data(),
               wide);
  task.set(SS_PARAM_ROBUST_MEAN, r.mean).set(SS_PARAM_ROBUST_COV, r.cov);
  task.set(SS_PARAM_ROBUST_COV_STORAGE, {storage});
  if (!parameters.empty()) {
    task.set(SS_PARAM_ROBUST_PARAM_COUNT, {static_cast<int64_t>(parameters.size())});
    task.set(SS_PARAM_ROBUST_PARAMS, parameters);
  }
  r.status = Entries<T>::robust_covariance(task, 0, SS_METHOD_TBS, services);
  return r;
}

/// Correlated normal data, of which the first part lies far away, scattered or in a cluster.
template <class T>
std::vector<T> contaminated(size_t p, size_t n, double part, double distance = 10,
                            bool scattered = false) {
  std::mt19937 random(1);
  const auto uniform = [&] { return (static_cast<double>(random()) + 0.5) * 0x1p-32; };
  const auto normal = [&] {
    return std::sqrt(-2 * std::log(uniform())) * std::cos(2 * M_PI * uniform());
  };
  std::vector<T> x;
  for (size_t i = 0; i < n; ++i) {
    const bool outlying = static_cast<double>(i) < part * static_cast<double>(n);
    double before = 0;
    for (size_t j = 0; j < p; ++j) {
      before = 0.5 * before + normal();
      const double outlier = scattered ? distance * normal() : distance + 0.1 * before;
      x.push_back(static_cast<T>(outlying ? outlier : before));
    }
  }
  return x;
}

template <class T>
void expect_near(const Robust<T>& found, const Estimate& expected, int64_t storage,
                 Real tolerance) {
  const size_t p = expected.mean.size();
  ASSERT_EQ(found.status, SS_OK);
  const auto deviation = [&](size_t j) { return std::sqrt(expected.cov[j * (p + 1)]); };
  for (size_t j = 0; j < p; ++j) {
    EXPECT_NEAR(found.mean[j], static_cast<double>(expected.mean[j]),
                static_cast<double>(tolerance * (deviation(j) + std::fabs(expected.mean[j]))));
  }
  size_t next = 0;
  for_each_stored(storage, static_cast<int64_t>(p), [&](int64_t i, int64_t j) {
    const auto k = static_cast<size_t>(i) * p + static_cast<size_t>(j);
    EXPECT_NEAR(found.cov[next++], static_cast<double>(expected.cov[k]),
                static_cast<double>(tolerance * deviation(k / p) * deviation(k % p)))
        << i << " " << j;
  });
}

/// A file of numbers below a line of names.
std::vector<double> read(const std::string& name, size_t p) {
  std::ifstream file(std::string(ORV_EXAMPLE_DATA "/") + name);
  std::string line;
  std::getline(file, line);
  std::vector<double> x;
  while (std::getline(file, line)) {
    std::istringstream cells(line);
    std::string cell;
    for (size_t j = 0; std::getline(cells, cell, ','); ++j) {
      if (j < p) x.push_back(std::stod(cell));
    }
  }
  return x;
}

// ---- Tests --------------------------------------------------------------------------------------

TYPED_TEST(EachPrecision, RobustCovarianceIsAsDefined) {
  using T = TypeParam;
  constexpr Real tolerance = sizeof(T) == 8 ? 1e-9L : 1e-3L;
  struct Case {
    size_t p, n;
    double part;
    std::vector<T> parameters;
  };
  const std::vector<T> start_only = {T(0.5), T(0.001), T(0.001), 0},
                       mild = {T(0.3), T(0.01), T(1e-5), 50}, one_step = {T(0.5), T(0.02), 1, 3};
  const Case cases[] = {
      {1, 100, 0.2, {}},        {1, 101, 0.2, start_only}, {2, 400, 0.3, {}},
      {3, 70, 0.1, mild},       {4, 500, 0.45, one_step},  {5, 41, 0.1, {}},
      {6, 5000, 0.2, {}},       {7, 4999, 0.25, mild},     {9, 200, 0.1, start_only},
      {31, 400, 0.1, one_step}, {31, 400, 0.1, mild},      {3, 7, 0, start_only}};
  int regular = 0, rejecting = 0, way = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.p << " variables, " << c.n << " observations");
    const std::vector<T> x = contaminated<T>(c.p, c.n, c.part);
    const Observations o{c.p, {x.begin(), x.end()}};
    const double limit = 0.5 * static_cast<double>(c.n - c.p) / static_cast<double>(c.n);
    const bool given = !c.parameters.empty();
    const double b = given ? std::min<double>(limit, c.parameters[0]) : limit;
    const Biweight t = biweight(c.p, b, given ? c.parameters[1] : 0.001);
    ++(t.c > 0 ? regular : rejecting);
    const Estimate expected = iterate(o, start(o), t, given ? c.parameters[2] : 0.001,
                                      given ? static_cast<int>(c.parameters[3]) : 100);
    for (const int64_t storage : {SS_MATRIX_FULL, SS_MATRIX_LOWER_PACKED, SS_MATRIX_UPPER_PACKED}) {
      const int64_t layout = ++way % 2 == 0 ? SS_ROWS : SS_COLUMNS;
      const Robust<T> found =
          robust<T>(c.p, x, c.parameters, layout, storage, orv_threads_serial(), way % 3 == 0);
      expect_near(found, expected, storage, tolerance);
      const Robust<T> plain = robust<T>(c.p, x, c.parameters);
      EXPECT_EQ(bits(found.mean), bits(plain.mean));
      size_t next = 0;
      for_each_stored(storage, static_cast<int64_t>(c.p), [&](int64_t i, int64_t j) {
        EXPECT_EQ(found.cov[next++],
                  plain.cov[static_cast<size_t>(i) * c.p + static_cast<size_t>(j)]);
      });
    }
  }
  EXPECT_GE(regular, 4);
  EXPECT_GE(rejecting, 4);
}

// Every 16th observation is an outlier, just those that are looked at first; values that are equal.
TYPED_TEST(EachPrecision, MediansOfUnevenData) {
  using T = TypeParam;
  const size_t p = 3, n = 4099;
  const std::vector<T> smooth = contaminated<T>(p, n, 0);
  for (const T grain : {T(0), T(0.5)}) {
    std::vector<T> x = smooth;
    for (size_t k = 0; k < x.size(); ++k) {
      if (grain > 0) x[k] = grain * std::round(x[k] / grain);
      if (k / p % 16 == 0) x[k] = T(20) + T(0.01) * x[k];
    }
    const Robust<T> found = robust<T>(p, x, {T(0.5), T(0.001), T(0.001), 0});
    expect_near(found, start({p, {x.begin(), x.end()}}), SS_MATRIX_FULL,
                sizeof(T) == 8 ? 1e-10L : 1e-4L);
  }
}

// What robustbase 0.95 gives, covOGK(x, n.iter = 1, sigmamu = scaleTau2), as wcenter and wcov.
TEST(RobustCovariance, StartIsThatOfR) {
  struct Case {
    const char* file;
    std::vector<double> mean, cov;  // the latter by its upper triangle
  };
  const Case cases[] = {{"stackloss.csv",
                         {56.375, 20, 85.4375, 13.0625},
                         {21.609375, 6.25, 15.5859375, 18.1015625, 5.375, 5, 7.25, 32.24609375,
                          12.97265625, 17.30859375}},
                        {"hbk.csv",
                         {1.5377049180, 1.7803278689, 1.6868852459, -0.0737704918},
                         {1.113496372, 0.0499220640, 0.11541252, 0.0576995431, 1.1333834991,
                          0.13843053, 0.0018274657, 1.05261489, -0.1037543671, 0.3120988981}}};
  for (const Case& c : cases) {
    const Robust<double> found = robust<double>(4, read(c.file, 4), {0.5, 0.001, 0.001, 0},
                                                SS_COLUMNS, SS_MATRIX_UPPER_PACKED);
    ASSERT_EQ(found.status, SS_OK);
    for (size_t j = 0; j < 4; ++j) EXPECT_NEAR(found.mean[j], c.mean[j], 1e-9) << c.file;
    for (size_t k = 0; k < 10; ++k) EXPECT_NEAR(found.cov[k], c.cov[k], 6e-9) << c.file << k;
  }
}

// The 14 outliers of these data (Hawkins, Bradu and Kass 1984) are well known, and masked from
// classical distances.
TEST(RobustCovariance, UnmasksTheOutliersOfHawkinsBraduAndKass) {
  const std::vector<double> x = read("hbk.csv", 3);
  const Robust<double> found = robust<double>(3, x);
  ASSERT_EQ(found.status, SS_OK);
  const Reals inverse = inverse_of({found.cov.begin(), found.cov.end()}, 3);
  for (size_t i = 0; i < 75; ++i) {
    Real square = 0;
    for (size_t k = 0; k < 9; ++k) {
      square += inverse[k] * (x[3 * i + k / 3] - found.mean[k / 3]) *
                (x[3 * i + k % 3] - found.mean[k % 3]);
    }
    EXPECT_EQ(square > __zokdChi2ICDF(3, 0.999), i < 14) << i + 1;
  }
}

// The stopping rule has the unit of the data; figures of a program written apart.
TEST(RobustCovariance, AccuracyIsInTheUnitOfTheData) {
  const std::vector<double> iris = read("iris.csv", 5);
  struct Case {
    double unit, accuracy, variance;
  };
  for (const Case& c : {Case{1, 0.001, 0.678}, {0.001, 0.001, 0.723}, {1, 1e-20, 0.663}}) {
    std::vector<double> x;
    for (const double v : iris) x.push_back(v * c.unit);
    const Robust<double> found = robust<double>(5, x, {0.5, 0.01, c.accuracy, 100});
    ASSERT_EQ(found.status, SS_OK);
    EXPECT_NEAR(found.cov[0] / (c.unit * c.unit), c.variance, 0.0005);
  }
}

// Rows and variables in another order, other units, another origin.
TEST(RobustCovariance, IsEquivariant) {
  const size_t p = 6, n = 500;
  const std::vector<double> x = contaminated<double>(p, n, 0.2);
  for (const double iterations : {0.0, 500.0}) {
    const std::vector<double> to_the_end = {0.5, 0.001, 1e-24, iterations};
    const Robust<double> before = robust(p, x, to_the_end);
    ASSERT_EQ(before.status, SS_OK);
    std::vector<size_t> rows(n), variables(p);
    std::iota(rows.begin(), rows.end(), 0), std::iota(variables.begin(), variables.end(), 0);
    std::ranges::shuffle(rows, std::mt19937(1)), std::ranges::shuffle(variables, std::mt19937(2));
    const double unit[] = {1, -3, 1e-3, 1e5, 0.7, 20}, origin[] = {0, 1e6, -1, 1e10, 5, -1e4};
    std::vector<double> changed;
    for (const size_t i : rows) {
      for (const size_t j : variables) changed.push_back(x[i * p + j] * unit[j] + origin[j]);
    }
    const Robust<double> after = robust(p, changed, to_the_end);
    Estimate expected;
    for (const size_t j : variables) {
      expected.mean.push_back(before.mean[j] * unit[j] + origin[j]);
      for (const size_t k : variables)
        expected.cov.push_back(before.cov[j * p + k] * unit[j] * unit[k]);
    }
    expect_near(after, expected, SS_MATRIX_FULL, 1e-7L);
  }
}

// The mean of the good data is 0 and their variance 1 or 4/3. Scattered outliers may be nearly half
// of all, those of one cluster fewer.
TYPED_TEST(EachPrecision, WithstandsOutliers) {
  using T = TypeParam;
  struct Case {
    double part;
    bool scattered;
  };
  const size_t p = 5;
  for (const Case& c : {Case{0.1, true}, {0.3, true}, {0.45, true}, {0.1, false}, {0.2, false}}) {
    for (const double distance : {10.0, 100.0, 1e4}) {
      SCOPED_TRACE(testing::Message() << c.part << (c.scattered ? " about " : " at ") << distance);
      const Robust<T> found = robust(p, contaminated<T>(p, 2000, c.part, distance, c.scattered));
      ASSERT_EQ(found.status, SS_OK);
      for (size_t j = 0; j < p; ++j) {
        EXPECT_NEAR(found.mean[j], 0, 0.15) << j;
        EXPECT_GT(found.cov[j * (p + 1)], 0.8);
        // Distances are scaled to half of all data, the outliers among them.
        EXPECT_LT(found.cov[j * (p + 1)], 3.5);
      }
    }
  }
}

// Far from 0 a plain sum of products would have no digit left.
TEST(RobustCovariance, OriginCostsNoDigits) {
  std::vector<double> x = contaminated<double>(4, 1000, 0.2);
  for (double& v : x)
    v = std::ldexp(std::round(std::ldexp(v, 20)), -20);  // so that shifts are exact
  const Robust<double> before = robust(4, x);
  for (double& v : x) v += 0x1p27;
  const Robust<double> after = robust(4, x);
  for (size_t k = 0; k < 16; ++k) EXPECT_NEAR(after.cov[k], before.cov[k], 1e-6) << k;
}

// Out of range they are the defaults: count, breakdown above the limit, rejection, accuracy, limit.
TYPED_TEST(EachPrecision, ParametersOutOfRangeAreTheDefaults) {
  using T = TypeParam;
  constexpr T nan = std::numeric_limits<T>::quiet_NaN();
  const std::vector<T> x = contaminated<T>(5, 300, 0.2);
  const Robust<T> standard = robust(5, x), start = robust<T>(5, x, {T(0.5), T(0.001), T(0.001), 0});
  const T a = T(0.001);
  for (const std::vector<T>& same : {std::vector<T>{T(0.1), a, a},
                                     {1, a, a, 100},
                                     {nan, a, a, 100},
                                     {1, 0, a, 100},
                                     {1, 1, a, 100},
                                     {1, nan, a, 100},
                                     {1, a, 0, 100},
                                     {1, a, -1, 100},
                                     {1, a, nan, 100},
                                     {1, a, a, -1},
                                     {1, a, a, nan},
                                     {1, a, a, T(1e30)},
                                     {1, a, a, T(100.9)},
                                     {T(0.1), a, a, 0, 0}}) {
    // As floats the default numbers are not those of the table of doubles.
    const Robust<T> found = robust(5, x, same);
    ASSERT_EQ(found.status, SS_OK);
    for (size_t k = 0; k < 25; ++k) EXPECT_NEAR(found.cov[k], standard.cov[k], 1e-5);
  }
  for (const T none : {T(0), T(0.9), T(-0.9)}) {
    EXPECT_EQ(bits(robust<T>(5, x, {T(0.5), a, a, none}).cov), bits(start.cov));
  }
  EXPECT_NE(bits(standard.cov), bits(start.cov));
}

TYPED_TEST(EachPrecision, RobustCovarianceOfDegenerateData) {
  using T = TypeParam;
  constexpr T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
  const std::vector<T> start_only = {T(0.5), T(0.001), T(0.001), 0};
  std::vector<T> x = contaminated<T>(3, 200, 0.2);
  const Robust<T> two = robust<T>(
      2,
      [&] {
        std::vector<T> y;
        for (size_t k = 0; k < x.size(); ++k)
          if (k % 3 != 1) y.push_back(x[k]);
        return y;
      }(),
      start_only);
  // A variable that is constant adds nothing: the others' weights are as without it but for the
  // quantiles of three variables.
  for (size_t i = 0; i < 200; ++i) x[3 * i + 1] = 7;
  const Robust<T> constant = robust(3, x, start_only);
  ASSERT_EQ(constant.status, SS_OK);
  EXPECT_EQ(constant.mean[1], 7);
  for (const size_t k : {1, 3, 4, 5, 7}) EXPECT_NEAR(constant.cov[k], 0, 1e-5) << k;
  EXPECT_NEAR(constant.mean[0], two.mean[0], 0.1);
  EXPECT_NEAR(constant.cov[0], two.cov[0], 0.3);

  const Robust<T> iterated = robust(3, x);
  ASSERT_EQ(iterated.status, SS_OK);
  EXPECT_EQ(iterated.mean[1], 7);
  EXPECT_EQ(iterated.cov[4], 0);
  EXPECT_NEAR(iterated.mean[0], 0, 0.2);

  const std::vector<T> all_constant(600, T(2.5));
  EXPECT_EQ(robust(3, all_constant).status, SS_NO_POSITIVE_EIGENVALUE);
  const Robust<T> point = robust(3, all_constant, start_only);
  EXPECT_EQ(point.status, SS_OK);
  EXPECT_EQ(point.mean, std::vector<T>(3, T(2.5)));
  EXPECT_EQ(point.cov, std::vector<T>(9, T(0)));
  EXPECT_LT(robust(1, all_constant).status, 0);

  for (const T bad : {inf, -inf, nan}) {
    for (const size_t p : {1, 2, 5}) {
      std::vector<T> y = contaminated<T>(p, 200, 0.1);
      y[50 * p] = y[60 * p + p - 1] = bad;
      EXPECT_LT(robust(p, y).status, 0) << bad << p;
      EXPECT_LT(robust(p, y, start_only).status, 0) << bad << p;
    }
  }
}

// The fixed shares make the same bits on any number of threads, other tables the same but rounding.
TYPED_TEST(EachPrecision, RobustCovarianceOnThreads) {
  using T = TypeParam;
  const size_t p = 8, n = 20000;
  const std::vector<T> x = contaminated<T>(p, n, 0.2);
  const Robust<T> serial = robust(p, x);
  Robust<T> fixed[2];
  for (const int threads : {1, 2}) {
    orv_threads_set_count(threads);
    fixed[threads - 1] = robust<T>(p, x, {}, SS_COLUMNS, 0, orv_threads_reproducible());
    const Robust<T> pool = robust<T>(p, x, {}, SS_ROWS, 0, orv_threads_pool());
    ASSERT_EQ(pool.status, SS_OK);
    for (size_t k = 0; k < p * p; ++k) {
      EXPECT_NEAR(pool.cov[k], serial.cov[k], sizeof(T) == 8 ? 1e-11 : 1e-3);
    }
  }
  orv_threads_set_count(0);
  EXPECT_EQ(bits(fixed[0].cov), bits(fixed[1].cov));
  EXPECT_EQ(bits(fixed[0].mean), bits(fixed[1].mean));
}

}  // namespace
