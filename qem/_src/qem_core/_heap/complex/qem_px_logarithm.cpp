// SPDX-License-Identifier: MIT
// Complex logarithms, powers and square root. Special arguments give what C99, annex G, tells.
#include "../extended/arctangent.hpp"
#include "../extended/exponential.hpp"
#include "../extended/logarithm.hpp"
#include "../extended/trigonometric.hpp"
#include "complex.hpp"

using namespace orv;

namespace {

/// hi + lo - 1 of two squares whose sum is near 1, exact before it is rounded.
TwoParts<Extended> sum_less_one(const TwoParts<Extended>& a, const TwoParts<Extended>& b) {
  const bool ordered = a.hi > b.hi;
  const Extended greater = ordered ? a.hi : b.hi, other = ordered ? b.hi : a.hi;
  const TwoParts<Extended> upper = exact_sum(greater - 1, other), lower = exact_sum(a.lo, b.lo);
  const TwoParts<Extended> sum = exact_sum(upper.hi, lower.hi);
  return exact_sum(sum.hi, sum.lo + (upper.lo + lower.lo));
}

/// 2 ln |z| of finite parts that are not both zero, whose squares are taken exactly. With `exact`
/// the second part is good for itself.
template <bool exact>
[[gnu::noinline]] TwoParts<Extended> log_of_exact_square(double re, double im) {
  constexpr Extended small = 0x1p-8L;
  const Halves<Extended> x(re), y(im);
  const TwoParts<Extended> a = exact_product(x, x), b = exact_product(y, y);
  const TwoParts<Extended> square = exact_sum(a.hi, b.hi);
  if (square.hi > 1 - small && square.hi < 1 + small) {
    const TwoParts<Extended> r = sum_less_one(a, b);
    return log1p_in_parts<exact>(r.hi, r.lo);
  }
  return log_in_parts<exact>(square.hi, square.lo + (a.lo + b.lo));
}

/// 2 ln |z| and the angle of special and of far numbers.
[[gnu::noinline]] ExtendedComplex log_at_ends(double re, double im) {
  if (is_infinite(re) || is_infinite(im)) return {__builtin_infl(), atan2_of(im, re)};
  if (__builtin_isnan(re) || __builtin_isnan(im)) return {re + im, re + im};
  if (re == 0 && im == 0) return {-1 / __builtin_fabsl(re), atan2_of(im, re)};
  const Extended x = re, y = im;
  return {log_of(x * x + y * y), atan2_of(y, x)};
}

/// 2 ln |z| and the angle of any z.
[[gnu::always_inline]] inline ExtendedComplex log_of_square(double re, double im) {
  const double near = re * re + im * im;
  if (__builtin_expect(!(near > 0x1p-1000 && near < 0x1p1000), false)) return log_at_ends(re, im);
  const bool cancels = absolute(near - 1) < 0.125;
  const TwoParts<Extended> log =
      __builtin_expect(cancels, false)
          ? log_of_exact_square<false>(re, im)
          : log_by_table<false>({Extended{re} * re + Extended{im} * im, near});
  const TwoParts<Extended> angle = angle_in_range<false>(im, re);
  return {log.hi + log.lo, angle.hi + angle.lo};
}

/// A number times one in two parts.
TwoParts<Extended> times(Extended a, const TwoParts<Extended>& b) {
  const TwoParts<Extended> product = exact_product(Halves(a), Halves(b.hi));
  return {product.hi, product.lo + a * b.lo};
}

TwoParts<Extended> plus(const TwoParts<Extended>& a, const TwoParts<Extended>& b) {
  const TwoParts<Extended> sum = exact_sum(a.hi, b.hi);
  return exact_sum_ordered(sum.hi, sum.lo + (a.lo + b.lo));
}

/// e^(re + i im)
[[gnu::always_inline]] inline ExtendedComplex complex_exp(const TwoParts<Extended>& re,
                                                          const TwoParts<Extended>& im) {
  const Extended power = exp_in_parts(re);
  const SinCos turn = sincos_of(im);
  return {power * turn.cosine, power * turn.sine};
}

/// e^(y ln x) of finite numbers, x not 0. The phase is the product's imaginary part and may be
/// large, so the logarithm has two parts.
[[gnu::noinline]] ExtendedComplex large_power(double x_re, double x_im, double y_re, double y_im) {
  constexpr Extended beyond_range = 11000;
  const TwoParts<Extended> square = log_of_exact_square<true>(x_re, x_im);
  const TwoParts<Extended> size = {0.5L * square.hi, 0.5L * square.lo};
  const TwoParts<Extended> angle = atan2_in_parts<true>(x_im, x_re);
  TwoParts<Extended> re = plus(times(y_re, size), times(-y_im, angle));
  const TwoParts<Extended> im = plus(times(y_re, angle), times(y_im, size));
  if (re.hi > beyond_range) re = {beyond_range, 0};
  if (re.hi < -beyond_range) re = {-beyond_range, 0};
  ExtendedComplex power = complex_exp(re, im);
  if (im.hi == 0) power.im = y_re * angle.hi + y_im * size.hi;  // zero with the right sign
  return power;
}

}  // namespace

void orv_qem_kernel_clog_scalar(QemComplexDouble* result, double re, double im) {
  const ExtendedComplex log = log_of_square(re, im);
  store(result, {0.5L * log.re, log.im});
}

void orv_qem_kernel_clog10_scalar(QemComplexDouble* result, double re, double im) {
  constexpr double log10_e = 0x1.BCB7B1526E50Ep-2, log10_e_lo = 0x1.95355BAAAFAD3p-57;
  const ExtendedComplex log = log_of_square(re, im);
  store(result, {log.re * (0.5 * log10_e) + log.re * (0.5 * log10_e_lo),
                 log.im * log10_e + log.im * log10_e_lo});
}

/// e^(y ln x). Special arguments have no rows of their own, their results follow from logarithm and
/// exponential.
void orv_qem_kernel_cpow_scalar(QemComplexDouble* result, double x_re, double x_im, double y_re,
                                double y_im) {
  constexpr double moderate = 16;  // |y ln x| that leaves the phase enough of 64 bits
  const ExtendedComplex log = log_of_square(x_re, x_im);
  const double half_re = 0.5 * y_re, half_im = 0.5 * y_im;
  const Extended re = half_re * log.re - y_im * log.im, im = y_re * log.im + half_im * log.re;
  const double size = static_cast<double>(log.re), angle = static_cast<double>(log.im);
  const double square_of_product =
      (y_re * y_re + y_im * y_im) * (0.25 * size * size + angle * angle);
  if (__builtin_expect(square_of_product < moderate * moderate, true)) {
    return store(result, complex_exp({re, -0.0L}, {im, -0.0L}));
  }
  const bool usual = is_finite(x_re) && is_finite(x_im) && is_finite(y_re) && is_finite(y_im) &&
                     !(x_re == 0 && x_im == 0);
  if (usual) return store(result, large_power(x_re, x_im, y_re, y_im));
  orv_qem_kernel_cexp_scalar(result, static_cast<double>(re), static_cast<double>(im));
}

void orv_qem_kernel_csqrt_scalar(QemComplexDouble* result, double re, double im) {
  const bool invalid = __builtin_isnan(re) || __builtin_isnan(im);
  if (is_infinite(im)) return store(result, {__builtin_infl(), im});
  if (is_infinite(re)) {
    const Extended other = __builtin_isnan(im) ? Extended{im} : __builtin_copysignl(0, im);
    if (re > 0) return store(result, {re, other});
    const Extended size = __builtin_copysignl(__builtin_infl(), im);
    return store(result, {__builtin_isnan(im) ? Extended{im} : 0, size});
  }
  if (invalid) return store(result, {re + im, re + im});
  if (re == 0 && im == 0) return store(result, {0, im});
  const Extended x = re, y = im;
  const Extended greater =
      __builtin_sqrtl(0.5L * (__builtin_sqrtl(x * x + y * y) + __builtin_fabsl(x)));
  const Extended smaller = y / (2 * greater);
  if (re >= 0) return store(result, {greater, smaller});
  store(result, {__builtin_fabsl(smaller), __builtin_copysignl(greater, y)});
}
