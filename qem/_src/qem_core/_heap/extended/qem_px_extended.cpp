// SPDX-License-Identifier: MIT
// The functions of extended numbers that are exported.
#include "arctangent.hpp"
#include "exponential.hpp"
#include "logarithm.hpp"
#include "trigonometric.hpp"

using namespace orv;

namespace {

constexpr Extended ln2 = 0x1.62E42FEFA39EF358p-1L;

/// Sums in the arguments of the logarithms below lose what is beside a number as large as this.
constexpr Extended large = 0x1p64L;

Extended with_sign_of(Extended x, Extended sign) { return __builtin_copysignl(x, sign); }
Extended root(Extended x) { return __builtin_sqrtl(x); }

HyperbolicPair any_hyperbolic_pair(Extended x) {
  if (is_nan(x)) return {x + x, x + x};
  if (__builtin_fabsl(x) < 11300) return hyperbolic_pair(x);
  // Halves of e^x whose product is e^x/2, or beyond the range.
  const Extended half = exp_of(0.5L * __builtin_fabsl(x)), size = 0.5L * half * half;
  return {with_sign_of(size, x), size};
}

}  // namespace

long double orv_qem_kernel_fabsl_scalar(long double x) { return __builtin_fabsl(x); }
double orv_qem_kernel__dabs_scalar(double x) { return __builtin_fabs(x); }
float orv_qem_kernel__sabs_scalar(float x) { return __builtin_fabsf(x); }
long double orv_qem_kernel_sqrtl_scalar(long double x) { return root(x); }

long double orv_qem_kernel_expl_scalar(long double x) { return exp_of(x); }
long double orv_qem_kernel_logl_scalar(long double x) { return log_of(x); }
long double orv_qem_kernel_log1pl_scalar(long double x) { return log1p_of(x); }

void orv_qem_kernel_sincosl_scalar(long double x, long double* sine, long double* cosine) {
  const SinCos both = sincos_of(x);
  *sine = both.sine, *cosine = both.cosine;
}
long double orv_qem_kernel_sinl_scalar(long double x) { return sincos_of(x).sine; }
long double orv_qem_kernel_cosl_scalar(long double x) { return sincos_of(x).cosine; }
long double orv_qem_kernel_tanl_scalar(long double x) {
  const SinCos both = sincos_of(x);
  return both.sine / both.cosine;
}

long double orv_qem_kernel_atan2l_scalar(long double y, long double x) { return atan2_of(y, x); }
long double orv_qem_kernel_atanl_scalar(long double x) { return atan2_of(x, 1); }
long double orv_qem_kernel_asinl_scalar(long double x) {
  return atan2_of(x, root((1 - x) * (1 + x)));
}
long double orv_qem_kernel_acosl_scalar(long double x) {
  return atan2_of(root((1 - x) * (1 + x)), x);
}

void orv_qem_kernel_sinhcoshl_scalar(long double x, long double* sinh, long double* cosh) {
  const HyperbolicPair both = any_hyperbolic_pair(x);
  *sinh = both.sinh, *cosh = both.cosh;
}
long double orv_qem_kernel_sinhl_scalar(long double x) { return any_hyperbolic_pair(x).sinh; }
long double orv_qem_kernel_coshl_scalar(long double x) { return any_hyperbolic_pair(x).cosh; }
long double orv_qem_kernel_tanhl_scalar(long double x) {
  if (__builtin_fabsl(x) > 24) return with_sign_of(1, x);
  const HyperbolicPair both = any_hyperbolic_pair(x);
  return both.sinh / both.cosh;
}

long double orv_qem_kernel_asinhl_scalar(long double x) {
  const Extended a = __builtin_fabsl(x), square = a * a;
  if (a > large) return with_sign_of(log_of(a) + ln2, x);
  return with_sign_of(log1p_of(a + square / (1 + root(1 + square))), x);
}
long double orv_qem_kernel_acoshl_scalar(long double x) {
  const Extended t = x - 1;
  return x > large ? log_of(x) + ln2 : log1p_of(t + root(t * (t + 2)));
}
long double orv_qem_kernel_atanhl_scalar(long double x) {
  const Extended a = __builtin_fabsl(x);
  return with_sign_of(0.5L * log1p_of(2 * a / (1 - a)), x);
}
