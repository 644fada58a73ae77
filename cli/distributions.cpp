// SPDX-License-Identifier: MIT
#include "distributions.hpp"

#include <algorithm>
#include <utility>

namespace orv_cli {
namespace {

/// A function of the library, given its parameters in a vector.
template <class R, class... P>
int32_t call(int32_t (*function)(int32_t, StreamState*, int32_t, R*, P...), int32_t method,
             StreamState* stream, int32_t n, void* r, const double* parameters) {
  return [&]<size_t... i>(std::index_sequence<i...>) {
    return function(method, stream, n, static_cast<R*>(r), static_cast<P>(parameters[i])...);
  }
  (std::index_sequence_for<P...>{});
}

template <auto function>
int32_t draw(int32_t method, StreamState* stream, int32_t n, void* r, const double* parameters) {
  return call(function, method, stream, n, r, parameters);
}

constexpr Parameter shift = {"shift", Allowed::any, 0}, location = {"location", Allowed::any, 0},
                    scale = {"scale", Allowed::above_0, 1}, mean = {"mean", Allowed::any, 0},
                    sd = {"sd", Allowed::above_0, 1}, shape = {"shape", Allowed::above_0, {}};

constexpr Parameter probability = {"p", Allowed::probability, {}};

std::string_view beyond_the_lot(const double* lot_sample_marked) {
  if (lot_sample_marked[1] > lot_sample_marked[0]) return "sample";
  return lot_sample_marked[2] > lot_sample_marked[0] ? "marked" : "";
}

const std::vector<Distribution>& table() {
  static const std::vector<Distribution> rows = {
      {"beta",
       "shift + scale X, X on [0, 1] with density x^(p-1) (1-x)^(q-1) / B(p, q)",
       {{"p", Allowed::above_0, {}}, {"q", Allowed::above_0, {}}, shift, scale},
       {},
       draw<_zokdRngBeta>,
       draw<_zoksRngBeta>,
       nullptr,
       beta_law},
      {"cauchy",
       "location + scale X, X with density 1 / (pi (1 + x^2))",
       {location, scale},
       {},
       draw<_zokdRngCauchy>,
       draw<_zoksRngCauchy>,
       nullptr,
       cauchy_law},
      {"exponential",
       "shift + scale X, X with density e^-x from 0 on",
       {shift, scale},
       {},
       draw<_zokdRngExponential>,
       draw<_zoksRngExponential>,
       nullptr,
       exponential_law},
      {"gamma",
       "shift + scale X, X with density x^(shape-1) e^-x / Gamma(shape) from 0 on",
       {shape, shift, scale},
       {},
       draw<_zokdRngGamma>,
       draw<_zoksRngGamma>,
       nullptr,
       gamma_law},
      {"gaussian",
       "mean + sd X, X with density e^(-x^2/2) / sqrt(2 pi)",
       {mean, sd},
       {{"icdf", RNG_GAUSSIAN_ICDF,
         "the inverse of the distribution function, one uniform number each"},
        {"boxmuller", RNG_GAUSSIAN_BOXMULLER, "Box and Muller's sines, two uniform numbers each"},
        {"boxmuller2", RNG_GAUSSIAN_BOXMULLER2,
         "Box and Muller's sines and cosines, two uniform numbers for two"}},
       draw<_zokdRngGaussian>,
       draw<_zoksRngGaussian>,
       nullptr,
       gaussian_law},
      {"gumbel",
       "location + scale ln X, X exponential: a law of minima",
       {location, scale},
       {},
       draw<_zokdRngGumbel>,
       draw<_zoksRngGumbel>,
       nullptr,
       gumbel_law},
      {"laplace",
       "location + scale X, X with density e^-|x| / 2",
       {location, scale},
       {},
       draw<_zokdRngLaplace>,
       draw<_zoksRngLaplace>,
       nullptr,
       laplace_law},
      {"lognormal",
       "shift + scale e^X, X gaussian with mean and sd",
       {mean, sd, shift, scale},
       {},
       draw<_zokdRngLognormal>,
       draw<_zoksRngLognormal>,
       nullptr,
       lognormal_law},
      {"rayleigh",
       "shift + scale X, X with density 2 x e^(-x^2) from 0 on",
       {shift, scale},
       {},
       draw<_zokdRngRayleigh>,
       draw<_zoksRngRayleigh>,
       nullptr,
       rayleigh_law},
      {"weibull",
       "shift + scale X, X with density shape x^(shape-1) e^(-x^shape) from 0 on",
       {shape, shift, scale},
       {},
       draw<_zokdRngWeibull>,
       draw<_zoksRngWeibull>,
       nullptr,
       weibull_law},
      {"bernoulli",
       "1 with probability p, else 0",
       {probability},
       {},
       nullptr,
       nullptr,
       draw<_zokiRngBernoulli>,
       bernoulli_law},
      {"binomial",
       "successes in trials of probability p",
       {{"trials", Allowed::count, {}}, probability},
       {},
       nullptr,
       nullptr,
       draw<_zokiRngBinomial>,
       binomial_law},
      {"geometric",
       "failures before the first success, trials having probability p",
       {{"p", Allowed::probability_above_0, {}}},
       {},
       nullptr,
       nullptr,
       draw<_zokiRngGeometric>,
       geometric_law},
      {"hypergeometric",
       "marked ones in a sample from a lot",
       {{"lot", Allowed::count, {}},
        {"sample", Allowed::count, {}},
        {"marked", Allowed::count, {}}},
       {},
       nullptr,
       nullptr,
       draw<_zokiRngHypergeometric>,
       hypergeometric_law,
       beyond_the_lot},
      {"negative-binomial",
       "failures before that many successes, trials having probability p",
       {{"successes", Allowed::above_0, {}}, {"p", Allowed::probability_above_0, {}}},
       {},
       nullptr,
       nullptr,
       draw<_zokiRngNegbinomial>,
       negative_binomial_law},
      {"poisson",
       "events where the mean is expected",
       {{"mean", Allowed::mean_of_counts, {}}},
       {{"ptpe", RNG_POISSON_PTPE, "exact: inversion, from mean 27 on rejection"},
        {"poisnorm", RNG_POISSON_POISNORM, "from Gaussian numbers, nearly exact"}},
       nullptr,
       nullptr,
       draw<_zokiRngPoisson>,
       poisson_law},
  };
  return rows;
}

}  // namespace

std::span<const Distribution> distributions() { return table(); }

const Distribution* find_distribution(std::string_view name) {
  const auto row = std::ranges::find(table(), name, &Distribution::name);
  return row == table().end() ? nullptr : &*row;
}

std::string_view text_of(Allowed allowed) {
  switch (allowed) {
    case Allowed::above_0:
      return "numbers above 0";
    case Allowed::probability:
      return "numbers from 0 to 1";
    case Allowed::probability_above_0:
      return "numbers above 0, to 1";
    case Allowed::count:
      return "whole numbers from 0 to 2147483647";
    case Allowed::mean_of_counts:
      return "numbers above 0, to 2e9";
    default:
      return "numbers";
  }
}

bool is_allowed(Allowed allowed, double x) {
  switch (allowed) {
    case Allowed::above_0:
      return x > 0;
    case Allowed::probability:
      return x >= 0 && x <= 1;
    case Allowed::probability_above_0:
      return x > 0 && x <= 1;
    case Allowed::count:
      return x >= 0;
    case Allowed::mean_of_counts:
      return x > 0 && x <= 2e9;
    default:
      return true;
  }
}

}  // namespace orv_cli
