#include "laws.hpp"

#include <algorithm>
#include <boost/math/distributions/beta.hpp>
#include <boost/math/distributions/cauchy.hpp>
#include <boost/math/distributions/exponential.hpp>
#include <boost/math/distributions/gamma.hpp>
#include <boost/math/distributions/laplace.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/rayleigh.hpp>
#include <boost/math/distributions/uniform.hpp>
#include <boost/math/distributions/weibull.hpp>
#include <cmath>
#include <numbers>

namespace orv_cli {
namespace {

namespace math = boost::math;

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

}  // namespace orv_cli
