// SPDX-License-Identifier: MIT
// The logarithm of the gamma function's size.
#include "log_gamma.hpp"

#include <orv/scalar.h>

namespace orv {
inline namespace ORV_TAG {
namespace {

/// |gamma(-a)|, a above 0 and not whole: gamma(-a) gamma(a) a sin(pi a) = -pi (Euler).
Extended reflected(Extended a, Extended fraction) {
  constexpr Extended pi = 0x1.921FB54442D1846Ap+1L;
  const Extended nearer = fraction < 0.5L ? fraction : 1 - fraction;
  const Extended sine = orv_qem_kernel_sinl_scalar(pi * nearer);
  return orv_qem_kernel_logl_scalar(pi / (a * sine)) - lgamma_pos(a);
}

bool is_odd(double whole) { return whole != 2 * __zokdFloor(0.5 * whole); }

}  // namespace
}  // namespace ORV_TAG
}  // namespace orv

using namespace orv;

double _zok_px_lgamma(double argument, int32_t* sign) {
  *sign = 1;
  const auto log_of_size = [sign](double x) -> Extended {
    const double a = __builtin_fabs(x);
    if (!(a < __builtin_inf())) return x * x;
    if (a == 0) {
      if (__builtin_signbit(x)) *sign = -1;
      return 1 / a;
    }
    if (x > 0) return lgamma_pos(x);
    const double whole = __zokdFloor(a), fraction = a - whole;
    if (fraction == 0) return 1 / fraction;
    if (!is_odd(whole)) *sign = -1;
    return reflected(a, fraction);
  };
  return in_extended(log_of_size, argument);
}

double __zokdLGamma(double x) {
  int32_t sign = 1;
  return _zok_px_lgamma(x, &sign);
}
