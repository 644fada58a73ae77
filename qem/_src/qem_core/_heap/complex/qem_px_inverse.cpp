// Complex inverse functions (T. E. Hull, T. F. Fairgrieve and P. T. P. Tang, 1997), in extended
// arithmetic, whose range leaves none of the method's special regions. Special arguments give what
// C99, annex G, tells.
#include "../extended/arctangent.hpp"
#include "../extended/logarithm.hpp"
#include "complex.hpp"

using namespace orv;

namespace {

constexpr Extended cacos_Across = 1.5L, cacos_Bcross = 0.6417L, casinh_Bcross = 0.9L;

Extended root(Extended x) { return __builtin_sqrtl(x); }

/// What acos and asin of x + iy with x, y >= 0 are made of: the legs of the triangle with the
/// angles acos and asin at its ends, and ln(A + sqrt(A^2 - 1)), where A is half the sum of the
/// distances from 1 and -1.
struct InverseParts {
  Extended adjacent, opposite, log;
};

/// `cross` is the x/A up to which the angle is well told by x/A alone.
[[gnu::always_inline]] inline InverseParts inverse_parts(Extended x, Extended y, Extended cross) {
  const Extended xm = x - 1, xp = x + 1, y2 = y * y;
  const Extended r = root(xp * xp + y2), s = root(xm * xm + y2), a = 0.5L * (r + s);
  const bool inside = x <= 1;
  // The distance beyond the nearer focus: s - xm where that cancels nothing.
  const Extended t = xm < s ? s - xm : y, from_r = y2 / (xp + r);
  InverseParts parts = {x, 0, 0};
  if (cross * a >= x) {
    parts.opposite = root((a - x) * (a + x));
  } else if (inside) {
    parts.opposite = root(0.5L * (x + a) * (from_r + t));
  } else {
    parts.opposite = y * root(0.5L * ((x + a) / (xp + r) + (x + a) / (xm + s)));
  }
  if (a > cacos_Across) {
    const TwoParts<Extended> log = log_in_parts<false>(a + root(a * a - 1));
    parts.log = log.hi + log.lo;
  } else {
    const Extended other = inside ? (t > 0 ? y2 / t : 0) : s + xm;
    const Extended am1 = 0.5L * (from_r + other);
    parts.log = log1p_of(am1 + root(am1 * (a + 1)));
  }
  return parts;
}

/// acos: an angle from 0 to pi, and a logarithm with the sign opposite to that of y.
ExtendedComplex inverse_cosine(double re, double im) {
  const Extended x = __builtin_fabs(re), y = __builtin_fabs(im), infinity = __builtin_infl();
  if (is_nan(x) || is_nan(y)) {
    const Extended nan = Extended{re} + im;
    if (is_infinite(re)) return {nan, -infinity};
    if (is_infinite(im)) return {nan, __builtin_copysignl(infinity, -im)};
    return {re == 0 ? extended_pio2.hi : nan, nan};
  }
  if (is_infinite(re) || is_infinite(im)) {
    return {atan2_of(y, re), __builtin_copysignl(infinity, -im)};
  }
  const InverseParts parts = inverse_parts(x, y, cacos_Bcross);
  return {atan2_of(parts.opposite, __builtin_copysignl(parts.adjacent, re)),
          __builtin_copysignl(parts.log, -im)};
}

}  // namespace

void orv_qem_kernel_cacos_scalar(QemComplexDouble* result, double re, double im) {
  store(result, inverse_cosine(re, im));
}

/// i acos z or -i acos z, whichever has a real part that is not negative.
void orv_qem_kernel_cacosh_scalar(QemComplexDouble* result, double re, double im) {
  const ExtendedComplex acos = inverse_cosine(re, im);
  store(result, {__builtin_fabsl(acos.im), __builtin_copysignl(acos.re, im)});
}

void orv_qem_kernel_casinh_scalar(QemComplexDouble* result, double re, double im) {
  const Extended infinity = __builtin_infl();
  const Extended nan = Extended{re} + im;
  if (__builtin_isnan(re) || __builtin_isnan(im)) {
    if (is_infinite(re)) return store(result, {re, nan});
    if (is_infinite(im)) return store(result, {infinity, nan});
    return store(result, {nan, im == 0 ? Extended{im} : nan});
  }
  if (is_infinite(re) || is_infinite(im)) {
    return store(result,
                 {__builtin_copysignl(infinity, re), atan2_of(im, is_infinite(re) ? infinity : 0)});
  }
  const InverseParts parts = inverse_parts(__builtin_fabs(im), __builtin_fabs(re), casinh_Bcross);
  store(result, {__builtin_copysignl(parts.log, re),
                 __builtin_copysignl(atan2_of(parts.adjacent, parts.opposite), im)});
}

void orv_qem_kernel_casin_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_casinh_scalar(result, -im, re);
  turn_back(result);
}

/// Real part ln(1 + 4x/((1 - x)^2 + y^2))/4, imaginary part atan2(2y, (1 - x)(1 + x) - y^2)/2.
void orv_qem_kernel_catanh_scalar(QemComplexDouble* result, double re, double im) {
  const double sign = __builtin_copysign(1.0, re);
  const Extended x = __builtin_fabs(re), y = im, nan = Extended{re} + im;
  if (is_infinite(im) || is_infinite(re)) {
    const Extended angle = __builtin_isnan(im) ? nan : __builtin_copysignl(extended_pio2.hi, im);
    return store(result, {sign * 0.0, angle});
  }
  if (is_nan(x) || is_nan(y)) return store(result, {re == 0 ? Extended{re} : nan, nan});
  const Extended less = 1 - x, square = y * y;
  const Extended ratio = 4 * x / (less * less + square);
  store(result,
        {sign * (0.25L * log1p_of(ratio)), 0.5L * atan2_of(2 * y, less * (1 + x) - square)});
}

void orv_qem_kernel_catan_scalar(QemComplexDouble* result, double re, double im) {
  orv_qem_kernel_catanh_scalar(result, -im, re);
  turn_back(result);
}
