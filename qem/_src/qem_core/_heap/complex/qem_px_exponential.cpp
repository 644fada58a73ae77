// SPDX-License-Identifier: MIT
// Complex exponential and hyperbolic functions, and the circular ones that are those turned by a
// right angle. Special arguments give what C99, annex G, tells.
#include "../extended/exponential.hpp"
#include "../extended/trigonometric.hpp"
#include "complex.hpp"

using namespace orv;

namespace {

/// Beyond, e^x is out of a double's range whatever it is multiplied by.
double within_range(double x) {
  constexpr double limit = 1500;
  return x > limit ? limit : x < -limit ? -limit : x;
}

/// e^re (cos im, sin im), re not NaN.
ExtendedComplex turned_exp(double re, const SinCos& turn) {
  const Extended power = exp_in_parts(within_range(re));
  return {power * turn.cosine, power * turn.sine};
}

/// NaN, with the invalid flag for an infinite angle.
Extended no_number(double re, double im) { return Extended{re} * 0 + (Extended{im} - im); }

}  // namespace

void orv_qem_kernel_cexp_scalar(QemComplexDouble* result, double re, double im) {
  if (im == 0) return store(result, {exp_of(re), im});
  if (is_finite(im) && !__builtin_isnan(re)) {
    const SinCos turn = sincos_of(im);
    if (!is_infinite(re)) return store(result, turned_exp(re, turn));
    const Extended size = re > 0 ? __builtin_infl() : 0;
    return store(result, {size * turn.cosine, size * turn.sine});
  }
  if (!is_infinite(re)) return store(result, {no_number(re, im), no_number(re, im)});
  if (re > 0) return store(result, {re, Extended{im} - im});
  *result = {0, __builtin_copysign(0.0, im)};
}

void orv_qem_kernel_ccosh_scalar(QemComplexDouble* result, double re, double im) {
  const double sign = __builtin_copysign(1.0, re);
  if (is_finite(re) && is_finite(im)) {
    const HyperbolicPair size = hyperbolic_pair(within_range(re));
    const SinCos turn = sincos_of(im);
    return store(result, {size.cosh * turn.cosine, size.sinh * turn.sine});
  }
  if (im == 0) return store(result, {Extended{re} * re, sign * im});
  if (re == 0) return store(result, {Extended{im} - im, sign * __builtin_copysign(0.0, im)});
  if (!is_infinite(re)) return store(result, {no_number(re, im), no_number(re, im)});
  if (!is_finite(im)) return store(result, {Extended{re} * re, Extended{im} - im});
  const SinCos turn = sincos_of(im);
  store(result, {re * sign * turn.cosine, re * turn.sine});
}

void orv_qem_kernel_csinh_scalar(QemComplexDouble* result, double re, double im) {
  if (is_finite(re) && is_finite(im)) {
    const HyperbolicPair size = hyperbolic_pair(within_range(re));
    const SinCos turn = sincos_of(im);
    return store(result, {size.sinh * turn.cosine, size.cosh * turn.sine});
  }
  if (im == 0) return store(result, {re, im});
  if (re == 0) return store(result, {re, Extended{im} - im});
  if (!is_infinite(re)) return store(result, {no_number(re, im), no_number(re, im)});
  if (!is_finite(im)) return store(result, {re, Extended{im} - im});
  const SinCos turn = sincos_of(im);
  store(result, {re * turn.cosine, __builtin_fabs(re) * turn.sine});
}

/// tanh z = (sinh x cosh x + i sin y cos y)/(sinh^2 x + cos^2 y), in which nothing cancels.
void orv_qem_kernel_ctanh_scalar(QemComplexDouble* result, double re, double im) {
  constexpr double level = 24;  // beyond, the real part is 1 in 64 bits
  const double sign = __builtin_copysign(1.0, re), size = __builtin_fabs(re);
  if (__builtin_isnan(re)) return store(result, {re + re, im == 0 ? Extended{im} : re + re});
  if (!is_finite(im)) {
    if (re == 0) return store(result, {re, Extended{im} - im});
    if (is_infinite(re)) return store(result, {sign, __builtin_copysignl(0, im)});
    return store(result, {Extended{im} - im, Extended{im} - im});
  }
  const SinCos turn = sincos_of(im);
  const Extended product = turn.sine * turn.cosine;
  if (size > level) {
    const Extended decay = exp_of(-2 * (size < 5000 ? size : 5000));
    return store(result, {sign, 4 * (product * decay)});
  }
  const HyperbolicPair h = hyperbolic_pair(re);
  const Extended inverse = 1 / (h.sinh * h.sinh + turn.cosine * turn.cosine);
  store(result, {h.sinh * h.cosh * inverse, product * inverse});
}

void orv_qem_kernel_ccos_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_ccosh_scalar(result, -im, re);
}

void orv_qem_kernel_csin_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_csinh_scalar(result, -im, re);
  turn_back(result);
}

void orv_qem_kernel_ctan_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_ctanh_scalar(result, -im, re);
  turn_back(result);
}
