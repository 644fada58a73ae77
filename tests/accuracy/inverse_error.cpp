// SPDX-License-Identifier: MIT
// Inverses of the error functions.
#include "support/inverse_error.hpp"
#include "families.hpp"

namespace orv_test {
namespace {

// All are t with erf(t) = d and erfc(t) = w = 1 - d up to a sign and sqrt2.

/// A number as precise as another.
struct Number {
  mpfr_t value;
  explicit Number(mpfr_srcptr like) { mpfr_init2(value, mpfr_get_prec(like)); }
  ~Number() { mpfr_clear(value); }
  operator mpfr_ptr() { return value; }
};

/// To all digits of y: E. Halley's method triples those of a long double, which has the range for
/// any w. Of a negative w NaN.
void inverse(mpfr_ptr y, mpfr_ptr d, mpfr_ptr w) {
  if (mpfr_nan_p(w) || mpfr_sgn(w) < 0) return mpfr_set_nan(y);
  if (mpfr_zero_p(w)) return mpfr_set_inf(y, 1);
  Number slope(y), step(y);
  mpfr_set_ld(y, inverse_error(mpfr_get_ld(d, MPFR_RNDN), mpfr_get_ld(w, MPFR_RNDN)), MPFR_RNDN);
  if (mpfr_cmp_d(d, 0.5) > 0) {
    mpfr_erfc(step, y, MPFR_RNDN);
    mpfr_sub(step, w, step, MPFR_RNDN);
  } else {
    mpfr_erf(step, y, MPFR_RNDN);
    mpfr_sub(step, step, d, MPFR_RNDN);
  }
  mpfr_const_pi(slope, MPFR_RNDN);
  mpfr_sqrt(slope, slope, MPFR_RNDN);
  mpfr_mul(step, step, slope, MPFR_RNDN);
  mpfr_sqr(slope, y, MPFR_RNDN);
  mpfr_exp(slope, slope, MPFR_RNDN);
  mpfr_mul(step, step, slope, MPFR_RNDN);
  mpfr_div_2ui(step, step, 1, MPFR_RNDN);
  mpfr_mul(slope, step, y, MPFR_RNDN);
  mpfr_add_ui(slope, slope, 1, MPFR_RNDN);
  mpfr_div(step, step, slope, MPFR_RNDN);
  mpfr_sub(y, y, step, MPFR_RNDN);
}

void exact_erfinv(mpfr_t* y, mpfr_t* x) {
  Number d(y[0]), w(y[0]);
  mpfr_abs(d, x[0], MPFR_RNDN);
  mpfr_ui_sub(w, 1, d, MPFR_RNDN);
  inverse(y[0], d, w);
  mpfr_copysign(y[0], y[0], x[0], MPFR_RNDN);
}

void exact_erfcinv(mpfr_t* y, mpfr_t* x) {
  Number d(y[0]), w(y[0]);
  const bool upper = mpfr_cmp_ui(x[0], 1) > 0;
  mpfr_set(w, x[0], MPFR_RNDN);
  if (upper) mpfr_ui_sub(w, 2, x[0], MPFR_RNDN);
  mpfr_ui_sub(d, 1, w, MPFR_RNDN);
  inverse(y[0], d, w);
  mpfr_setsign(y[0], y[0], upper, MPFR_RNDN);
}

void exact_cdfnorminv(mpfr_t* y, mpfr_t* x) {
  Number twice(x[0]), root(y[0]);
  mpfr_mul_2ui(twice, x[0], 1, MPFR_RNDN);
  exact_erfcinv(y, &twice.value);
  mpfr_sqrt_ui(root, 2, MPFR_RNDN);
  mpfr_mul(y[0], y[0], root, MPFR_RNDN);
  if (!mpfr_zero_p(y[0])) mpfr_neg(y[0], y[0], MPFR_RNDN);
}

/// Values of w where a table's row changes, 16 in the middle of the scale and as many as a share
/// allows of the others; and e^(-s^2) for some s where the slow path's does.
template <class R, class Seam>
void row_seams(Inputs<R>& in, Seam seam) {
  constexpr int binades = is_float<R> ? 27 : 55, rows = 16;
  const int some = in.amount(0.02);
  for (int i = 0; i < binades * rows; ++i) {
    if (i < 4 * rows || static_cast<int>(in.random.below(binades * rows)) < some) {
      seam(std::ldexp(2 - i % rows / double{rows}, -1 - i / rows));
    }
  }
  for (const double w : {0x1.0b6c3afdde064p-52, 0x1.3ce9b9de78f85p-71, 0x1.969d47321e4ccp-93,
                         0x1.a8c1f14e2af5dp-145, 0x1.30d759323998cp-208, 0x1.2c9d6038f58d1p-283,
                         0x1.9755956ad4e9cp-370, 0x1.e50c483c04dcdp-578, 0x1.015cba207fda9p-831}) {
    if (w > std::numeric_limits<R>::min()) seam(w);
  }
}

/// Functions on (0, end) with poles at both ends and their zero in the middle.
template <class R>
void between_poles(Inputs<R>& in, double end) {
  in.linear(0.3, 0, end);
  in.patterns(0.2, 0, end);
  in.patterns(0.2, is_float<R> ? 0x1p-30 : 0x1p-60, end);
  in.near(0.1, end / 2, end / 4);
  in.near(0.1, end, end / 4);
  row_seams(in, [&](double w) {
    in.seam(w * (end / 2));
    in.seam(end - w * (end / 2));
  });
}
template <class R>
void erfcinv_inputs(Inputs<R>& in) {
  between_poles(in, 2);
  for (const double hard : {0x1.EC0787D29513Bp-2, 0x1.7FD8FF14184C4p0, 0x1.7AB2ECp-3}) in.at(hard);
}
template <class R>
void cdfnorminv_inputs(Inputs<R>& in) {
  between_poles(in, 1);
  for (const double hard : {0x1.4DFC812784241p-3, 0x1.EFED6878BD95Ap-1, 0x1.A0054Ep-6}) in.at(hard);
}

template <class R>
void erfinv_inputs(Inputs<R>& in) {
  in.linear(0.4, -1, 1);
  in.patterns_of_both_signs(0.2, 0, 1);
  in.patterns_of_both_signs(0.1, 0x1p-40, 1);
  in.near(0.1, 1, 0.25);
  in.near(0.1, -1, 0.25);
  row_seams(in, [&](double w) {
    in.seam(1 - w);
    in.seam(w - 1);
  });
  // The slow path's end, and where its results become denormal.
  for (const double x : {0x1p-35, -0x1p-35, 0x1.20DD750429B6Dp-1022}) in.seam(x);
}

}  // namespace

std::vector<Function> inverse_error_functions() {
  return {
      {"sd", "CdfNormInv", Approximate, exact_cdfnorminv, cdfnorminv,
       ORV_INPUTS(cdfnorminv_inputs)},
      {"sd", "ErfcInv", Approximate, exact_erfcinv, erfcinv, ORV_INPUTS(erfcinv_inputs)},
      {"sd", "ErfInv", Approximate, exact_erfinv, erfinv, ORV_INPUTS(erfinv_inputs)},
  };
}

}  // namespace orv_test
