// SPDX-License-Identifier: MIT
// The chi-square distribution: k degrees of freedom are the gamma distribution of shape k/2 and
// scale 2.
#include <orv/scalar.h>

#include "incomplete_gamma.hpp"
#include "log_gamma.hpp"

using namespace orv;

namespace {

Extended below(double k, double x) { return lower_incomplete_gamma(0.5L * k, 0.5L * x); }

Extended density(double k, double x) {
  constexpr double ln2 = 0.6931471805999999;
  if (x <= 0 || k <= 0 || (x == __builtin_inf() && k < x)) return 0;
  const Extended a = 0.5L * k;
  return orv_qem_kernel_expl_scalar((a - 1) * orv_qem_kernel_logl_scalar(x) - 0.5L * x - a * ln2 -
                                    lgamma_pos(a));
}

Extended quantile(double k, double p) { return 2 * inverse_incomplete_gamma(0.5L * k, p, 1 - p); }

}  // namespace

double __zokdChi2CDF(double k, double x) { return in_extended(below, k, x); }
double __zokdChi2PDF(double k, double x) { return in_extended(density, k, x); }
double __zokdChi2ICDF(double k, double p) { return in_extended(quantile, k, p); }
