// SPDX-License-Identifier: MIT
#include "families.hpp"

namespace orv_test {
namespace {

/// Parts of factors: mostly of a size that products neither overflow nor underflow.
template <class R>
void factor_inputs(Inputs<R>& in) {
  const double far = is_float<R> ? 0x1p30 : 0x1p250;
  arithmetic_inputs(in);
  in.patterns_of_both_signs(2, 1 / far, far);
}

void absolute(mpfr_t* y, mpfr_t* x) { mpfr_abs(y[0], x[0], MPFR_RNDN); }
void conjugate(mpfr_t* y, mpfr_t* x) {
  mpfr_set(y[0], x[0], MPFR_RNDN);
  mpfr_neg(y[1], x[1], MPFR_RNDN);
}
void complex_sum(mpfr_t* y, mpfr_t* x) {
  mpfr_add(y[0], x[0], x[2], MPFR_RNDN);
  mpfr_add(y[1], x[1], x[3], MPFR_RNDN);
}
/// MPFR's own form with two products is infinite only where one of them is.
void complex_product(mpfr_t* y, mpfr_t* x) {
  mpfr_fmms(y[0], x[0], x[2], x[1], x[3], MPFR_RNDN);
  mpfr_fmma(y[1], x[0], x[3], x[1], x[2], MPFR_RNDN);
}
void complex_difference(mpfr_t* y, mpfr_t* x) {
  mpfr_sub(y[0], x[0], x[2], MPFR_RNDN);
  mpfr_sub(y[1], x[1], x[3], MPFR_RNDN);
}
void product_by_conjugate(mpfr_t* y, mpfr_t* x) {
  mpfr_neg(x[3], x[3], MPFR_RNDN);
  complex_product(y, x);
}
double square(double x) { return x * x; }
void reciprocal(mpfr_t* y, mpfr_t* x) { mpfr_ui_div(y[0], 1, x[0], MPFR_RNDN); }
double reciprocal_in_double(double x) { return 1 / x; }

/// Numerator and denominator are rounded as in the kernel: no bound would hold where they cancel.
template <class R>
void quotient_of_rounded(mpfr_t* y, mpfr_t* x) {
  const double* s = usual_scalars;
  const auto linear = [](double scale, mpfr_t z, double shift) {
    const R product = static_cast<R>(scale) * static_cast<R>(mpfr_get_d(z, MPFR_RNDN));
    mpfr_set_d(z, product + static_cast<R>(shift), MPFR_RNDN);
  };
  linear(s[0], x[0], s[1]);
  linear(s[2], x[1], s[3]);
  mpfr_div(y[0], x[0], x[1], MPFR_RNDN);
}
void linear_frac(mpfr_t* y, mpfr_t* x) {
  const bool in_float = mpfr_get_prec(x[0]) == std::numeric_limits<float>::digits;
  (in_float ? quotient_of_rounded<float> : quotient_of_rounded<double>)(y, x);
}

/// Around both zeros, and where the sums are rounded.
template <class R>
void linear_inputs(Inputs<R>& in) {
  arithmetic_inputs(in);
  in.patterns_of_both_signs(1, 1e-6, 1e6);
  for (const int k : {0, 2}) in.near(0.1, -usual_scalars[k + 1] / usual_scalars[k], 0.1);
}

}  // namespace

std::vector<Function> arithmetic_functions() {
  return {
      {"sd", "Abs", Rounded, absolute, ::fabs, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "Add", Rounded, binary<mpfr_add>, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "Sub", Rounded, binary<mpfr_sub>, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "Mul", Rounded, binary<mpfr_mul>, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "Sqr", Rounded, unary<mpfr_sqr>, square, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "Div", Rounded, binary<mpfr_div>, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "Inv", Rounded, reciprocal, reciprocal_in_double, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "LinearFrac", Rounded, linear_frac, nullptr, ORV_INPUTS(linear_inputs)},
      {"cz", "Add", Rounded, complex_sum, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"cz", "Mul", Approximate, complex_product, nullptr, ORV_INPUTS(factor_inputs), true},
      {"cz", "Sub", Rounded, complex_difference, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"cz", "MulByConj", Approximate, product_by_conjugate, nullptr, ORV_INPUTS(factor_inputs),
       true},
      {"cz", "Conj", Rounded, conjugate, nullptr, ORV_INPUTS(arithmetic_inputs)},
  };
}

}  // namespace orv_test
