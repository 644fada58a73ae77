// SPDX-License-Identifier: MIT
// Complex inverse functions (T. E. Hull, T. F. Fairgrieve and P. T. P. Tang, 1997), in extended
// arithmetic, whose range leaves none of the method's special regions. Special arguments give what
// C99, annex G, tells.
#include "../extended/arctangent.hpp"
#include "../extended/logarithm.hpp"
#include "complex.hpp"

using namespace orv;

namespace {

Extended root(Extended x) { return __builtin_sqrtl(x); }
double sign(double x) { return __builtin_copysign(1.0, x); }

/// What acos and asin of x + iy with x, y >= 0 are made of: the legs of a triangle with the angles
/// acos and asin at its ends, the one as a multiple of x, and ln(A + sqrt(A^2 - 1)), where A is
/// half the sum of the distances from 1 and -1.
struct InverseParts {
  Extended adjacent_by_x, opposite, log;
};

/// For y > 0. Where the method divides x by A, or takes the root of (A - x)(A + x), this uses that
/// the root times that of A^2 - 1 is A y: no part cancels and the angle needs no cases.
[[gnu::always_inline]] inline InverseParts inverse_parts(double x, double y) {
  const Extended xm = Extended{x} - 1, xp = Extended{x} + 1, y2 = Extended{y} * y;
  const Extended r = root(xp * xp + y2), s = root(xm * xm + y2), a = 0.5L * (r + s);
  // (r - xp)/2 and (s - |xm|)/2 as quotients.
  const Extended from_r = r + xp, from_s = s + __builtin_fabsl(xm);
  const Extended quotient = 0.5L * y2 / (from_r * from_s);
  const Extended beyond = x <= 1 ? quotient * from_r : 0.5L * from_s;
  const Extended am1 = quotient * from_s + beyond, height = root(am1 * (a + 1));
  return {height, a * y, log1p_of(am1 + height)};
}

/// For y = 0.
[[gnu::noinline]] InverseParts inverse_parts_of_real(double x) {
  const Extended t = Extended{x} - 1;
  if (x <= 1) return {1, root((1 - Extended{x}) * (t + 2)), 0};
  return {1, 0, log1p_of(t + root(t * (t + 2)))};
}

[[gnu::always_inline]] inline InverseParts inverse_parts_of(double x, double y) {
  return __builtin_expect(y == 0, false) ? inverse_parts_of_real(x) : inverse_parts(x, y);
}

ExtendedComplex acos_of_special(double re, double im) {
  const Extended infinity = __builtin_infl(), nan = Extended{re} + im;
  const Extended far = -sign(im) * infinity;
  if (__builtin_isnan(re) || __builtin_isnan(im)) {
    if (is_infinite(re)) return {nan, -infinity};
    if (is_infinite(im)) return {nan, far};
    return {re == 0 ? extended_pio2.hi : nan, nan};
  }
  return {atan2_of(__builtin_fabs(im), re), far};
}

ExtendedComplex asinh_of_special(double re, double im) {
  const Extended infinity = __builtin_infl(), nan = Extended{re} + im;
  if (__builtin_isnan(re) || __builtin_isnan(im)) {
    if (is_infinite(re)) return {re, nan};
    if (is_infinite(im)) return {infinity, nan};
    return {nan, im == 0 ? Extended{im} : nan};
  }
  return {sign(re) * infinity, atan2_of(im, is_infinite(re) ? infinity : 0)};
}

/// 4x/((1 - x)^2 + y^2) and (1 - x)(1 + x) - y^2.
template <class R>
struct AtanhParts {
  R ratio, aside;

  AtanhParts(R x, R y) {
    const R less = 1 - x, square = y * y;
    ratio = 4 * x / (less * less + square), aside = less * (1 + x) - square;
  }
};

/// Real part ln(1 + ratio)/4, imaginary part the angle of (aside, 2y), halved; for x >= 0.
[[gnu::always_inline]] inline ExtendedComplex atanh_by(const Approached& ratio,
                                                       const Approached& y2,
                                                       const Approached& aside) {
  return {0.25L * log1p_of(ratio), 0.5L * angle_of(y2, aside)};
}

[[gnu::noinline]] ExtendedComplex atanh_at_ends(double re, double im) {
  const Extended nan = Extended{re} + im;
  if (is_infinite(im) || is_infinite(re)) {
    return {sign(re) * 0.0, __builtin_isnan(im) ? nan : sign(im) * extended_pio2.hi};
  }
  if (is_nan(nan)) return {re == 0 ? Extended{re} : nan, nan};
  const AtanhParts<Extended> parts(absolute(re), im);
  const ExtendedComplex atanh = atanh_by(parts.ratio, 2 * Extended{im}, parts.aside);
  return {sign(re) * atanh.re, atanh.im};
}

}  // namespace

/// acos: an angle from 0 to pi, and a logarithm with the sign opposite to that of y.
void orv_qem_kernel_cacos_scalar(QemComplexDouble* result, double re, double im) {
  if (!is_finite(re) || !is_finite(im)) return store(result, acos_of_special(re, im));
  const InverseParts parts = inverse_parts_of(absolute(re), absolute(im));
  store(result, {angle_of(parts.opposite, parts.adjacent_by_x * re), -sign(im) * parts.log});
}

/// i acos z or -i acos z, whichever has a real part that is not negative.
void orv_qem_kernel_cacosh_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_cacos_scalar(result, re, im);
  *result = {absolute(result->im), __builtin_copysign(result->re, im)};
}

void orv_qem_kernel_casinh_scalar(QemComplexDouble* result, double re, double im) {
  if (!is_finite(re) || !is_finite(im)) return store(result, asinh_of_special(re, im));
  const InverseParts parts = inverse_parts_of(absolute(im), absolute(re));
  store(result, {sign(re) * parts.log, angle_of(parts.adjacent_by_x * im, parts.opposite)});
}

void orv_qem_kernel_casin_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_casinh_scalar(result, -im, re);
  turn_back(result);
}

void orv_qem_kernel_catanh_scalar(QemComplexDouble* result, double re, double im) {
  constexpr double large = 0x1p500;
  if (!(absolute(re) < large && absolute(im) < large)) return store(result, atanh_at_ends(re, im));
  const AtanhParts<Extended> parts(absolute(re), im);
  const AtanhParts<double> near(absolute(re), im);
  const ExtendedComplex atanh =
      atanh_by({parts.ratio, near.ratio}, 2 * im, {parts.aside, near.aside});
  store(result, {sign(re) * atanh.re, atanh.im});
}

void orv_qem_kernel_catan_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_catanh_scalar(result, -im, re);
  turn_back(result);
}
