// The chi-square distribution: k degrees of freedom are the gamma distribution of shape k/2 and
// scale 2.
#include <orv/scalar.h>
#include <qem/_src/qem_core/frame/control_words.hpp>

#include "incomplete_gamma.hpp"
#include "log_gamma.hpp"

using namespace orv;

double __zokdChi2CDF(double k, double x) { return lower_incomplete_gamma(0.5 * k, 0.5 * x); }

double __zokdChi2PDF(double k, double x) {
  constexpr double ln2 = 0.6931471805999999;
  if (x <= 0 || k <= 0) return 0;
  if (x == __builtin_inf() && k < x) return 0;
  const ControlWords words(environment_extended);
  const Extended a = 0.5L * k;
  const Extended log = (a - 1) * orv_qem_kernel_logl_scalar(x) - 0.5L * x - a * ln2 - lgamma_pos(a);
  return static_cast<double>(orv_qem_kernel_expl_scalar(log));
}

double __zokdChi2ICDF(double k, double p) {
  return 2 * inverse_incomplete_gamma(0.5 * k, p, 1 - p);
}
