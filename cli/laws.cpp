// SPDX-License-Identifier: MIT
#include "laws.hpp"

#include <algorithm>
#include <boost/math/distributions/bernoulli.hpp>
#include <boost/math/distributions/beta.hpp>
#include <boost/math/distributions/binomial.hpp>
#include <boost/math/distributions/cauchy.hpp>
#include <boost/math/distributions/exponential.hpp>
#include <boost/math/distributions/gamma.hpp>
#include <boost/math/distributions/geometric.hpp>
#include <boost/math/distributions/hypergeometric.hpp>
#include <boost/math/distributions/laplace.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/negative_binomial.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/poisson.hpp>
#include <boost/math/distributions/rayleigh.hpp>
#include <boost/math/distributions/uniform.hpp>
#include <boost/math/distributions/weibull.hpp>
#include <cmath>
#include <limits>
#include <numbers>

namespace orv_cli {
namespace {

namespace math = boost::math;

/// The law of whole numbers from low to high.
template <class D>
Law whole_law(const D& d, double low, double high, double mean, double deviation) {
  return {.mean = mean,
          .deviation = deviation,
          .cdf =
              [=](double x) {
                if (x < low) return 0.0;
                return x >= high ? 1.0 : cdf(d, std::floor(x));
              },
          .quantile = [=](double p) { return p <= 0   ? low
                                             : p >= 1 ? high
                                                      : quantile(d, p); },
          .whole = true};
}

/// The law of one number.
Law law_of_one(double x) {
  return {.mean = x,
          .deviation = 0,
          .cdf = [=](double y) { return y < x ? 0.0 : 1.0; },
          .quantile = [=](double) { return x; },
          .whole = true};
}

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The law of shift + scale X, X below all of its values having probability 0.
template <class D>
Law without_moments(const D& d, double shift, double scale) {
  const double low = support(d).first, high = support(d).second;
  return {.mean = {},
          .deviation = {},
          .cdf = [=](double x) { return cdf(d, std::clamp((x - shift) / scale, low, high)); },
          .quantile =
              [=](double p) {
                return shift + scale * (p <= 0 ? low : p >= 1 ? high : quantile(d, p));
              }};
}

template <class D>
Law with_moments(const D& d, double shift = 0, double scale = 1) {
  Law law = without_moments(d, shift, scale);
  law.mean = shift + scale * mean(d);
  law.deviation = scale * standard_deviation(d);
  return law;
}

}  // namespace

Law uniform_law(const double* p) { return with_moments(math::uniform(p[0], p[1])); }

Law exponential_law(const double* p) { return with_moments(math::exponential(), p[0], p[1]); }

Law laplace_law(const double* p) { return with_moments(math::laplace(p[0], p[1])); }

Law weibull_law(const double* p) { return with_moments(math::weibull(p[0]), p[1], p[2]); }

Law cauchy_law(const double* p) { return without_moments(math::cauchy(), p[0], p[1]); }

/// The draw is shift + scale sqrt(-ln u), a Rayleigh law of sigma 1/sqrt(2).
Law rayleigh_law(const double* p) {
  return with_moments(math::rayleigh(1 / std::numbers::sqrt2), p[0], p[1]);
}

Law lognormal_law(const double* p) { return with_moments(math::lognormal(p[0], p[1]), p[2], p[3]); }

/// That of minima: location + scale ln e, e exponential.
Law gumbel_law(const double* p) {
  const double location = p[0], scale = p[1];
  return {.mean = location - scale * std::numbers::egamma,
          .deviation = scale * std::numbers::pi / std::sqrt(6.0),
          .cdf = [=](double x) { return -std::expm1(-std::exp((x - location) / scale)); },
          .quantile = [=](double q) { return location + scale * std::log(-std::log1p(-q)); }};
}

Law gaussian_law(const double* p) { return with_moments(math::normal(p[0], p[1])); }

Law gamma_law(const double* p) {
  return with_moments(math::gamma_distribution<>(p[0]), p[1], p[2]);
}

Law beta_law(const double* p) {
  return with_moments(math::beta_distribution<>(p[0], p[1]), p[2], p[3]);
}

Law whole_uniform_law(const double* p) {
  const double low = p[0], count = p[1] - p[0];
  const auto clamped = [=](double k) { return std::clamp(k, 0.0, count); };
  return {.mean = low + (count - 1) / 2,
          .deviation = std::sqrt((count * count - 1) / 12),
          .cdf = [=](double x) { return clamped(std::floor(x) - low + 1) / count; },
          .quantile =
              [=](double q) { return low + std::min(clamped(std::floor(q * count)), count - 1); },
          .whole = true};
}

Law bernoulli_law(const double* p) {
  const math::bernoulli d(*p);
  return whole_law(d, 0, 1, *p, std::sqrt(*p * (1 - *p)));
}

Law binomial_law(const double* p) {
  const double n = p[0], q = p[1];
  if (n == 0 || q == 0 || q == 1) return law_of_one(n * q);
  return whole_law(math::binomial(n, q), 0, n, n * q, std::sqrt(n * q * (1 - q)));
}

Law geometric_law(const double* p) {
  if (*p == 1) return law_of_one(0);
  return whole_law(math::geometric(*p), 0, infinity, (1 - *p) / *p, std::sqrt(1 - *p) / *p);
}

Law hypergeometric_law(const double* p) {
  const double lot = p[0], sample = p[1], marked = p[2];
  const double low = std::max(0.0, sample + marked - lot), high = std::min(sample, marked);
  if (low == high) return law_of_one(low);
  const double share = marked / lot;
  const double variance = sample * share * (1 - share) * (lot - sample) / (lot - 1);
  const auto whole = [](double x) { return static_cast<unsigned>(x); };
  return whole_law(math::hypergeometric(whole(marked), whole(sample), whole(lot)), low, high,
                   sample * share, std::sqrt(variance));
}

Law negative_binomial_law(const double* p) {
  const double successes = p[0], q = 1 - p[1];
  if (q == 0) return law_of_one(0);
  return whole_law(math::negative_binomial(successes, p[1]), 0, infinity, successes * q / p[1],
                   std::sqrt(successes * q) / p[1]);
}

Law poisson_law(const double* p) {
  return whole_law(math::poisson(*p), 0, infinity, *p, std::sqrt(*p));
}

}  // namespace orv_cli
