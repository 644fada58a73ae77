// SPDX-License-Identifier: MIT
#include "distribution_peers.hpp"

#include <math.h>
#include <stdio.h>

#include <map>
#include <memory>
#include <random>

#if ORV_HAVE_BOOST
#include <boost/random/beta_distribution.hpp>
#include <boost/random/exponential_distribution.hpp>
#include <boost/random/gamma_distribution.hpp>
#include <boost/random/laplace_distribution.hpp>
#include <boost/random/lognormal_distribution.hpp>
#include <boost/random/mersenne_twister.hpp>
#include <boost/random/normal_distribution.hpp>
#include <boost/random/uniform_01.hpp>
#include <boost/random/weibull_distribution.hpp>
#endif

namespace orv_bench {
namespace {

std::map<std::string, Moments> all_moments() {
  const double pi = 3.14159265358979323846, half = exp(0.125);
  std::map<std::string, Moments> all = {
      {"uniform", {0.5, sqrt(1.0 / 12)}},
      {"exponential", {1, 1}},
      {"laplace", {0, sqrt(2)}},
      {"weibull", {tgamma(1.4), sqrt(tgamma(1.8) - tgamma(1.4) * tgamma(1.4))}},
      {"rayleigh", {sqrt(pi) / 2, sqrt(1 - pi / 4)}},
      {"gumbel", {-0.57721566490153286, pi / sqrt(6)}},
      {"lognormal", {half, half * sqrt(expm1(0.25))}},
  };
  for (const char* const gaussian : {"gaussian_by_sines", "gaussian_by_pairs",
                                     "gaussian_by_inversion", "vectors_of_10", "vectors_of_100"}) {
    all[gaussian] = {0, 1};
  }
  for (const double alpha : gamma_shapes) all[name_of("gamma", {alpha})] = {alpha, sqrt(alpha)};
  for (const auto& [p, q] : beta_shapes) {
    all[name_of("beta", {p, q})] = {p / (p + q), sqrt(p * q / (p + q + 1)) / (p + q)};
  }
  for (const double lambda : poisson_means) {
    for (const char* const way : {"poisson", "poisson_by_gaussians"}) {
      all[name_of(way, {lambda})] = {lambda, sqrt(lambda)};
    }
  }
  for (const auto& [n, p] : binomial_trials) {
    all[name_of("binomial", {n, p})] = {n * p, sqrt(n * p * (1 - p))};
  }
  for (const auto& [lot, sample, marked] : hypergeometric_lots) {
    const double mean = sample * marked / lot;
    all[name_of("hypergeometric", {lot, sample, marked})] = {
        mean, sqrt(mean * (1 - marked / lot) * (lot - sample) / (lot - 1))};
  }
  for (const auto& [a, p] : negbinomial_shapes) {
    all[name_of("negbinomial", {a, p})] = {a * (1 - p) / p, sqrt(a * (1 - p)) / p};
  }
  for (const double p : geometric_chances) {
    all[name_of("geometric", {p})] = {(1 - p) / p, sqrt(1 - p) / p};
  }
  all["bernoulli"] = {bernoulli_chance, sqrt(bernoulli_chance * (1 - bernoulli_chance))};
  all["integers"] = {(integers_below - 1) / 2.0,
                     sqrt((1.0 * integers_below * integers_below - 1) / 12)};
  return all;
}

/// Numbers of a distribution object, one after the other.
template <class T, class Generator, class Distribution>
NamedContender<T> one_by_one(const std::string& who, const std::string& law,
                             Distribution distribution) {
  struct State {
    Generator generator;
    Distribution distribution;
  };
  const auto state = std::make_shared<State>(State{Generator(), distribution});
  return {law, {who + '/' + law, [state](int32_t n, T* r) {
                  for (int32_t i = 0; i < n; ++i) {
                    r[i] = static_cast<T>(state->distribution(state->generator));
                  }
                }}};
}

}  // namespace

std::string name_of(const char* law, const std::vector<double>& shapes) {
  std::string name = law;
  char text[32];
  for (const double shape : shapes) {
    snprintf(text, sizeof text, "_%g", shape);
    name += text;
  }
  return name;
}

const Moments* moments_of(const std::string& law) {
  static const std::map<std::string, Moments> all = all_moments();
  const auto found = all.find(law);
  return found != all.end() ? &found->second : nullptr;
}

template <class T>
std::vector<NamedContender<T>> distribution_peers() {
  std::vector<NamedContender<T>> peers;
  const T zero = 0, one = 1, shape = static_cast<T>(2.5), half = static_cast<T>(0.5);
  const auto standard = [&](const std::string& law, auto distribution) {
    peers.push_back(one_by_one<T, std::mt19937>("std", law, distribution));
  };
  standard("uniform", std::uniform_real_distribution<T>(zero, one));
  standard("exponential", std::exponential_distribution<T>(one));
  standard("weibull", std::weibull_distribution<T>(shape, one));
  standard("cauchy", std::cauchy_distribution<T>(zero, one));
  standard("lognormal", std::lognormal_distribution<T>(zero, half));
  for (const char* const law :
       {"gaussian_by_sines", "gaussian_by_pairs", "gaussian_by_inversion"}) {
    standard(law, std::normal_distribution<T>(zero, one));
  }
  for (const double alpha : gamma_shapes) {
    standard(name_of("gamma", {alpha}), std::gamma_distribution<T>(static_cast<T>(alpha), one));
  }
#if ORV_HAVE_BOOST
  using namespace boost::random;
  const auto boost = [&](const std::string& law, auto distribution) {
    peers.push_back(one_by_one<T, boost::random::mt19937>("boost", law, distribution));
  };
  boost("uniform", uniform_01<T>());
  boost("exponential", exponential_distribution<T>(one));
  boost("laplace", laplace_distribution<T>(zero, one));
  boost("weibull", weibull_distribution<T>(shape, one));
  boost("lognormal", lognormal_distribution<T>(zero, half));
  for (const char* const law :
       {"gaussian_by_sines", "gaussian_by_pairs", "gaussian_by_inversion"}) {
    boost(law, normal_distribution<T>(zero, one));
  }
  for (const double alpha : gamma_shapes) {
    boost(name_of("gamma", {alpha}), gamma_distribution<T>(static_cast<T>(alpha), one));
  }
  for (const auto& [p, q] : beta_shapes) {
    boost(name_of("beta", {p, q}), beta_distribution<T>(static_cast<T>(p), static_cast<T>(q)));
  }
#endif
  return peers;
}

template <>
std::vector<NamedContender<int32_t>> distribution_peers() {
  using I = int32_t;
  std::vector<NamedContender<I>> peers;
  const auto standard = [&](const std::string& law, auto distribution) {
    peers.push_back(one_by_one<I, std::mt19937>("std", law, distribution));
  };
  for (const double lambda : poisson_means) {
    for (const char* const way : {"poisson", "poisson_by_gaussians"}) {
      standard(name_of(way, {lambda}), std::poisson_distribution<I>(lambda));
    }
  }
  for (const auto& [n, p] : binomial_trials) {
    standard(name_of("binomial", {n, p}), std::binomial_distribution<I>(static_cast<I>(n), p));
  }
  for (const auto& [a, p] : negbinomial_shapes) {
    if (a != floor(a)) continue;
    standard(name_of("negbinomial", {a, p}),
             std::negative_binomial_distribution<I>(static_cast<I>(a), p));
  }
  for (const double p : geometric_chances) {
    standard(name_of("geometric", {p}), std::geometric_distribution<I>(p));
  }
  standard("bernoulli", std::bernoulli_distribution(bernoulli_chance));
  standard("integers", std::uniform_int_distribution<I>(0, integers_below - 1));
  return peers;
}

template std::vector<NamedContender<double>> distribution_peers<double>();
template std::vector<NamedContender<float>> distribution_peers<float>();

}  // namespace orv_bench
