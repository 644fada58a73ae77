// SPDX-License-Identifier: MIT
// What a distribution should look like: moments, distribution function, quantiles.
#pragma once

#include <functional>
#include <optional>

namespace orv_cli {

struct Law {
  std::optional<double> mean, deviation;  // none where the integrals diverge
  std::function<double(double)> cdf;      // probability of x or less
  std::function<double(double)> quantile;
  bool whole = false;  // of whole numbers alone
};

Law uniform_law(const double* range);
Law exponential_law(const double* shift_scale);
Law laplace_law(const double* location_scale);
Law weibull_law(const double* shape_shift_scale);
Law cauchy_law(const double* location_scale);
Law rayleigh_law(const double* shift_scale);
Law lognormal_law(const double* mean_sd_shift_scale);
Law gumbel_law(const double* location_scale);
Law gaussian_law(const double* mean_sd);
Law gamma_law(const double* shape_shift_scale);
Law beta_law(const double* p_q_shift_scale);

Law whole_uniform_law(const double* range);
Law bernoulli_law(const double* p);
Law binomial_law(const double* trials_p);
Law geometric_law(const double* p);
Law hypergeometric_law(const double* lot_sample_marked);
Law negative_binomial_law(const double* successes_p);
Law poisson_law(const double* mean);

}  // namespace orv_cli
