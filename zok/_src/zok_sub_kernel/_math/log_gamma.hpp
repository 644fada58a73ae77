// SPDX-License-Identifier: MIT
// The logarithm of the gamma function, for those who go on from there in extended arithmetic.
#pragma once

#include <orv/qem.h>

#include "extended.hpp"
#include "tables/log_gamma_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr Extended stirling_from = 16;

/// ln gamma(x) - ((x - 1/2) ln x - x + ln sqrt(2 pi)), x from stirling_from up.
inline Extended stirling_rest(Extended x) {
  const Extended r = 1 / x;
  const auto v = static_cast<double>(r * r);
  double sum = 0;
  for (int k = 6; k >= 0; --k) sum = sum * v + stirling_series[k];
  return r * (1 / 12.0L + v * sum);
}

/// ln gamma(2 + t) for |t| up to 1/2.
inline Extended log_gamma_near_2(Extended t) {
  const Extended square = t * t;
  Extended even = 0, odd = 0;  // neither waits for the other
  for (int k = 20; k >= 0; k -= 2) {
    even = even * square + log_gamma_series[k];
    odd = odd * square + log_gamma_series[k + 1];
  }
  return t * (even + t * odd);
}

/// ln gamma(1 + t) for |t| up to 1/2, however small.
inline Extended log_gamma_near_1(Extended t) {
  return log_gamma_near_2(t) - orv_qem_kernel_log1pl_scalar(t);
}

/// ln gamma(x), x above 0. What lies between 2.5 and Stirling's series steps down to 2.
inline Extended lgamma_pos(Extended x) {
  if (x < 0.5L) return log_gamma_near_2(x) - orv_qem_kernel_logl_scalar(x * (1 + x));
  if (x < 1.5L) return log_gamma_near_1(x - 1);
  if (x >= stirling_from) {
    return (x - 0.5L) * orv_qem_kernel_logl_scalar(x) - x + (ln_root_2_pi + stirling_rest(x));
  }
  if (x <= 2.5L) return log_gamma_near_2(x - 2);
  Extended product = 1;
  while (x > 2.5L) x -= 1, product *= x;
  return log_gamma_near_2(x - 2) + orv_qem_kernel_logl_scalar(product);
}

}  // namespace ORV_TAG
}  // namespace orv
