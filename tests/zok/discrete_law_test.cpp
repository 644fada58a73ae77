// SPDX-License-Identifier: MIT
// Integer distributions against their laws: parameters in every method, and on both sides of every
// border between two.
#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <memory>
#include <numeric>

#include "law_support.hpp"

using namespace orv_test;

namespace {

using Integers = Law<int32_t>;

/// Of a law's whole numbers from 0 on, by functions of a whole number: P(X <= k), P(X > k). Beside
/// the quantiles each number near the mode gets a cell.
Integers whole(std::string name, Draw<int32_t> draw, std::function<double(double)> up_to,
               std::function<double(double)> beyond, double mean, double deviation, double mode) {
  Integers law = {std::move(name),
                  std::move(draw),
                  [=](double x) { return x < 0 ? 0 : up_to(floor(x)); },
                  [=](double x) { return x < 0 ? 1 : beyond(floor(x)); },
                  mean,
                  deviation,
                  {}};
  for (double k = fmax(mode - 40, 0); k < mode + 40 && k < 2e9; ++k) {
    law.borders.push_back(static_cast<int32_t>(k));
  }
  return law;
}

template <class... Parameters>
std::string named(const char* name, Parameters... parameters) {
  std::string text = name;
  char number[32];
  ((snprintf(number, sizeof number, " %.17g", static_cast<double>(parameters)), text += number),
   ...);
  return text;
}

Integers poisson(int32_t method, double lambda) {
  Integers law = whole(
      named("poisson", method, lambda), bound<int32_t>(_zokiRngPoisson, method, lambda),
      [=](double k) { return boost::math::gamma_q(k + 1, lambda); },
      [=](double k) { return boost::math::gamma_p(k + 1, lambda); }, lambda, sqrt(lambda),
      floor(lambda));
  if (method == RNG_POISSON_POISNORM) law.most_draws = 1'000'000;
  return law;
}

/// One mean for all: it has to be the law's.
Integers poisson_of_vector(double lambda) {
  Integers law = poisson(RNG_POISSON_POISNORM, lambda);
  law.name = named("poisson of a vector", lambda);
  law.draw = [lambda](StreamState* stream, int32_t n, int32_t* r) {
    return _zokiRngPoissonV(0, stream, n, r, std::vector<double>(n, lambda).data());
  };
  return law;
}

Integers binomial(int32_t n, double p) {
  const double q = 1 - p;
  return whole(
      named("binomial", n, p), bound<int32_t>(_zokiRngBinomial, 0, n, p),
      [=](double k) { return k >= n ? 1 : boost::math::ibetac(k + 1, n - k, p); },
      [=](double k) { return k >= n ? 0 : boost::math::ibeta(k + 1, n - k, p); }, n * p,
      sqrt(n * p * q), floor((n + 1.0) * p));
}

Integers negbinomial(double a, double p) {
  const double q = 1 - p;
  return whole(
      named("negative binomial", a, p), bound<int32_t>(_zokiRngNegbinomial, 0, a, p),
      [=](double k) { return boost::math::ibeta(a, k + 1, p); },
      [=](double k) { return boost::math::ibetac(a, k + 1, p); }, a * q / p, sqrt(a * q) / p,
      fmax(0, floor((a - 1) * q / p)));
}

Integers geometric(double p) {
  return whole(
      named("geometric", p), bound<int32_t>(_zokiRngGeometric, 0, p),
      [=](double k) { return k >= 2147483647 ? 1 : -expm1((k + 1) * log1p(-p)); },
      [=](double k) { return k >= 2147483647 ? 0 : exp((k + 1) * log1p(-p)); },
      p > 1e-8 ? (1 - p) / p : NAN, sqrt(1 - p) / p, 0);
}

/// Sums of probabilities from both ends, by their recurrence from the mode in extended precision.
struct Sums {
  double first;
  std::vector<double> up_to, beyond;

  double at(const std::vector<double>& sums, double k, double below, double above) const {
    if (k < first) return below;
    return k - first < static_cast<double>(sums.size()) ? sums[static_cast<size_t>(k - first)]
                                                        : above;
  }
};

template <class Step>
std::shared_ptr<Sums> sums_around(double mode, double deviation, double most, Step step) {
  const auto reach = static_cast<int64_t>(15 * deviation + 30), middle = static_cast<int64_t>(mode);
  const int64_t first = std::max<int64_t>(0, middle - reach);
  const int64_t last = std::min<int64_t>(static_cast<int64_t>(most), middle + reach);
  std::vector<long double> f(last - first + 1, 1);
  for (int64_t k = middle; k < last; ++k) f[k + 1 - first] = f[k - first] * step(k);
  for (int64_t k = middle; k > first; --k) f[k - 1 - first] = f[k - first] / step(k - 1);
  const long double total = std::accumulate(f.begin(), f.end(), 0.0L);
  const auto sums = std::make_shared<Sums>();
  sums->first = static_cast<double>(first);
  sums->up_to.resize(f.size());
  sums->beyond.resize(f.size());
  long double below = 0, above = 0;
  for (size_t k = 0; k < f.size(); ++k) {
    sums->up_to[k] = static_cast<double>((below += f[k]) / total);
  }
  for (size_t k = f.size(); k-- > 0; above += f[k]) {
    sums->beyond[k] = static_cast<double>(above / total);
  }
  return sums;
}

Integers hypergeometric(int32_t l, int32_t s, int32_t m) {
  const long double lot = l, sample = s, marked = m, others = lot - marked;
  const double mode = floor((m + 1.0) * (s + 1.0) / (l + 2.0)), mean = 1.0 * s * m / l;
  const double deviation = sqrt(mean * (1 - 1.0 * m / l) * (1.0 * l - s) / (l - 1.0));
  const auto sums = sums_around(mode, deviation, std::min(s, m), [=](int64_t k) {
    return (marked - k) * (sample - k) / ((k + 1) * (others - sample + k + 1));
  });
  return whole(
      named("hypergeometric", l, s, m), bound<int32_t>(_zokiRngHypergeometric, 0, l, s, m),
      [=](double k) { return sums->at(sums->up_to, k, 0, 1); },
      [=](double k) { return sums->at(sums->beyond, k, 1, 0); }, mean, deviation, mode);
}

std::vector<Integers> bernoulli_and_uniform() {
  std::vector<Integers> laws;
  for (const double p : {1e-3, 0.3, 0.5, 0.75}) {
    laws.push_back(whole(
        named("bernoulli", p), bound<int32_t>(_zokiRngBernoulli, 0, p),
        [=](double k) { return k < 1 ? 1 - p : 1; }, [=](double k) { return k < 1 ? p : 0; }, p,
        sqrt(p * (1 - p)), 0));
  }
  for (const int32_t n : {2, 6, 1000, 2147483647}) {
    laws.push_back(whole(
        named("uniform", n), bound<int32_t>(_zokiRngUniform, 0, 0, n),
        [=](double k) { return fmin((k + 1) / n, 1); },
        [=](double k) { return fmax(1 - (k + 1) / n, 0); }, (n - 1.0) / 2,
        sqrt((1.0 * n * n - 1) / 12), n / 2));
  }
  return laws;
}

std::vector<Integers> all_laws() {
  std::vector<Integers> laws = bernoulli_and_uniform();
  for (const double p : {0.9, 0.5, 0.1, 1e-3, 1e-7, 1e-9}) laws.push_back(geometric(p));

  const double below_27 = nextafter(27, 0), below_100 = nextafter(100, 0);
  for (const double lambda : {1e-3, 0.5, 1.0, 5.0, 10.3, below_27, 27.0, 27.9, 50.0, 99.99, 1000.0,
                              1e4, 1e6, 4e6, 3.3e7, 1e8, 2e9}) {
    laws.push_back(poisson(RNG_POISSON_PTPE, lambda));
  }
  for (const double lambda : {1e-3,
                              0.5,
                              nextafter(1, 0),
                              1.0,
                              1.3,
                              1.7,
                              nextafter(2, 1),
                              2.0,
                              3.0,
                              nextafter(4, 1),
                              4.0,
                              5.5,
                              8.0,
                              11.0,
                              16.0,
                              23.0,
                              32.0,
                              45.0,
                              64.0,
                              80.0,
                              below_100,
                              100.0,
                              1000.0,
                              1e5,
                              1e8}) {
    laws.push_back(poisson(RNG_POISSON_POISNORM, lambda));
    laws.push_back(poisson_of_vector(lambda));
  }

  const struct {
    int32_t n;
    double p;
  } trials[] = {{1, 0.5},
                {10, 0.5},
                {10, 0.1},
                {100, 0.1},
                {100, 0.9},
                {59, 0.5},
                {60, 0.5},
                {299, 0.1},
                {300, 0.1},
                {300, 0.9},
                {299, 0.9},
                {1000, 0.03},
                {10000, 0.3},
                {10000, 0.7},
                {1000000, 1e-3},
                {10000000, 0.5},
                {1000000000, 0.5},
                {1000000000, 3.1e-8},
                {2147483647, 1.2345e-8},
                {2147483647, 0.5},
                {2147483647, 0.999}};
  for (const auto& [n, p] : trials) laws.push_back(binomial(n, p));

  const int32_t lots[][3] = {{20, 10, 5},
                             {1000, 300, 120},
                             {1000, 120, 300},
                             {1000, 700, 120},
                             {1000, 300, 880},
                             {1000, 700, 880},
                             {1000, 130, 299},
                             {1000, 132, 305},
                             {160, 80, 80},
                             {156, 78, 78},
                             {100000, 1000, 50000},
                             {2147483647, 2000, 1000000000},
                             {2147483647, 30, 1000000000},
                             {2147483647, 1073741823, 1073741824},
                             {2147483647, 1500000000, 2000000000},
                             {900000000, 1000000, 500000000}};
  for (const auto& [l, s, m] : lots) laws.push_back(hypergeometric(l, s, m));

  const double successes[][2] = {
      {3, 0.5},       {1, 0.3},       {1, 0.05},      {0.5, 0.02},   {0.5, 0.01},      {0.5, 1e-6},
      {1, 1e-3},      {1, 1e-8},      {0.01, 1e-6},   {1e-3, 1e-4},  {0.9, 1e-2},      {10.5, 0.2},
      {10.5, 0.0868}, {10.5, 0.0867}, {100, 0.497},   {100, 0.4974}, {101, 0.5},       {100.9, 0.5},
      {1.5, 0.005},   {1.0001, 1e-6}, {1.0001, 1e-5}, {2, 0.01},     {2, 0.0099},      {100, 0.1},
      {1000, 1e-3},   {1000, 0.9},    {1e6, 0.5},     {1e9, 0.9},    {1e12, 1 - 1e-6}, {3, 1e-8}};
  for (const auto& [a, p] : successes) laws.push_back(negbinomial(a, p));
  return laws;
}

/// Where a table is walked each uniform has its number: the first whose cumulative probability is
/// above it, to what rounding leaves of both.
TEST(Discrete, TablesHoldTheLaw) {
  std::vector<double> u;
  for (int k = 0; k < 400; ++k) u.push_back((k + 0.37) / 400);
  for (int k = 9; k < 45; ++k) u.insert(u.end(), {exp2(-k), 1 - exp2(-k)});
  std::vector<Integers> laws = {hypergeometric(1000, 120, 300), hypergeometric(158, 78, 78),
                                hypergeometric(2147483647, 30, 1000000000)};
  for (const double lambda : {1e-3, 0.5, 5.5, 26.9}) laws.push_back(poisson(0, lambda));
  for (const auto& [n, p] : {std::pair{10, 0.25}, {100, 0.29}, {1000000, 2.9e-5}}) {
    laws.push_back(binomial(n, p));
  }
  laws.push_back(binomial(2147483647, 1.2345e-8));
  for (const auto& [a, p] : {std::pair{0.5, 0.2}, {1.0, 0.05}, {10.5, 0.0868}, {100.0, 0.4975}}) {
    laws.push_back(negbinomial(a, p));
  }
  for (const Integers& law : laws) {
    SCOPED_TRACE(law.name);
    const auto n = static_cast<int32_t>(u.size());
    std::vector<int32_t> r(u.size());
    ASSERT_EQ(law.draw(Given<double>(u), n, r.data()), RNG_OK);
    for (int32_t i = 0; i < n; ++i) {
      EXPECT_GT(law.lower(r[i]), u[i] - 1e-13) << u[i] << ": " << r[i];
      EXPECT_LE(law.lower(r[i] - 1), u[i] + 1e-13) << u[i] << ": " << r[i];
    }
  }
}

TEST(Discrete, NumbersFollowTheirLaws) {
  uint32_t seed = 70;
  for (const Integers& law : all_laws()) {
    ++seed;
    if (is_chosen(law.name)) expect_law(law, Stream(BRNG_MT19937, {seed}));
  }
}

}  // namespace
