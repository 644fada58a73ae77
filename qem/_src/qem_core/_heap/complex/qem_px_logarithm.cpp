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

/// ln |z| of finite parts of 53 bits that are not both zero. With `exact` the second part is good
/// for itself, not just to round the sum.
template <bool exact>
[[gnu::always_inline]] inline TwoParts<Extended> log_of_size(Extended x, Extended y) {
  constexpr Extended small = 0x1p-8L;
  const Extended square = x * x + y * y;
  TwoParts<Extended> log;
  if (exact || (square > 0.5L && square < 2)) {
    const TwoParts<Extended> a = exact_product(Halves(x), Halves(x));
    const TwoParts<Extended> b = exact_product(Halves(y), Halves(y));
    if (square > 1 - small && square < 1 + small) {
      const TwoParts<Extended> r = sum_less_one(a, b);
      log = log1p_in_parts<exact>(r.hi, r.lo);
    } else {
      const TwoParts<Extended> sum = exact_sum(a.hi, b.hi);
      log = log_in_parts<exact>(sum.hi, sum.lo + (a.lo + b.lo));
    }
  } else {
    log = log_in_parts<false>(square);
  }
  return {0.5L * log.hi, 0.5L * log.lo};
}

/// ln z of any z.
inline ExtendedComplex clog(double re, double im) {
  if (is_infinite(re) || is_infinite(im)) return {__builtin_infl(), atan2_of(im, re)};
  if (__builtin_isnan(re) || __builtin_isnan(im)) return {re + im, re + im};
  if (re == 0 && im == 0) return {-1 / __builtin_fabsl(re), atan2_of(im, re)};
  const TwoParts<Extended> log = log_of_size<false>(re, im);
  return {log.hi + log.lo, atan2_of(im, re)};
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

}  // namespace

void orv_qem_kernel_clog_scalar(QemComplexDouble* result, double re, double im) {
  store(result, clog(re, im));
}

void orv_qem_kernel_clog10_scalar(QemComplexDouble* result, double re, double im) {
  constexpr Extended log10_e = 0x1.BCB7B1526E50E32Ap-2L;
  const ExtendedComplex log = clog(re, im);
  store(result, {log.re * log10_e, log.im * log10_e});
}

/// e^(y ln x). The phase is the product's imaginary part and may be large, so the logarithm keeps
/// two parts. Special arguments have no rows of their own, their results follow from logarithm and
/// exponential.
void orv_qem_kernel_cpow_scalar(QemComplexDouble* result, double x_re, double x_im, double y_re,
                                double y_im) {
  const bool usual = is_finite(x_re) && is_finite(x_im) && is_finite(y_re) && is_finite(y_im) &&
                     !(x_re == 0 && x_im == 0);
  if (!usual) {
    const ExtendedComplex log = clog(x_re, x_im);
    const Extended re = y_re * log.re - y_im * log.im, im = y_re * log.im + y_im * log.re;
    return orv_qem_kernel_cexp_scalar(result, static_cast<double>(re), static_cast<double>(im));
  }
  const TwoParts<Extended> size = log_of_size<true>(x_re, x_im);
  const TwoParts<Extended> angle = atan2_in_parts<true>(x_im, x_re);
  const TwoParts<Extended> re = plus(times(y_re, size), times(-y_im, angle));
  const TwoParts<Extended> im = plus(times(y_re, angle), times(y_im, size));
  const Extended bounded = re.hi > 11000 ? 11000 : re.hi < -11000 ? -11000 : re.hi;
  const ExtendedPower power = exp_in_parts(bounded, static_cast<double>(re.lo));
  if (im.hi == 0) {
    const Extended zero = y_re * angle.hi + y_im * size.hi;  // which has the right sign
    return store(result, {scaled(power.value, power.exponent), zero});
  }
  const SinCos turn = sincos_of(im.hi, im.lo);
  store(result, {scaled(power.value * turn.cosine, power.exponent),
                 scaled(power.value * turn.sine, power.exponent)});
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
